#include "server/rights_templates.h"

#include <doctest/doctest.h>

#include <set>

#include "wire/rights_layout.h"
#include "wire/sent_frame.h"

namespace lineweir::server {
namespace {

using enum Right;
using Rights = std::set<Right>;

constexpr RightsTemplate templates[] = {RightsTemplate::Engineer, RightsTemplate::Host,
                                        RightsTemplate::Screener};

Rights missing_of(RightsTemplate work) {
  Rights missing;
  const std::string rights = rights_of(work);
  for (const RightPlace& place : rights_layout) {
    if (!allows(rights, place.right)) missing.insert(place.right);
  }
  return missing;
}

TEST_CASE("templates have the names of their work") {
  CHECK(find_rights_template("engineer") == RightsTemplate::Engineer);
  CHECK(find_rights_template("host") == RightsTemplate::Host);
  CHECK(find_rights_template("screener") == RightsTemplate::Screener);
  for (const char* name : {"", "Host", "hosts", "producer"})
    CHECK_FALSE(find_rights_template(name));
}

TEST_CASE("an engineer may do everything, and nobody is forced into passive mode or out of it") {
  CHECK(missing_of(RightsTemplate::Engineer) == Rights{ForcePassiveOff, ForcePassiveOn});
  CHECK(missing_of(RightsTemplate::Host) ==
        Rights{ForcePassiveOff, ForcePassiveOn, DatabasePathMenuItem, Com1, Com2, Com3, Com4,
               NetworkConnectionOption, PortOn, Off, ScreenerMode});
  CHECK(missing_of(RightsTemplate::Screener) ==
        Rights{ForcePassiveOff, ForcePassiveOn, DatabasePathMenuItem, Com1, Com2, Com3, Com4,
               NetworkConnectionOption, PortOn, Off, StudioMode, RemoteCom1, RemoteCom2, RemoteCom3,
               RemoteCom4, RemoteOn, RemoteOff, RemoteNext});
}

TEST_CASE("every template goes over the wire as it stands, and is no sign of missing rights") {
  for (const RightsTemplate work : templates) {
    const std::string rights = rights_of(work);
    CHECK(rights.size() == rights_length);
    CHECK(why_rights_cannot_travel(rights).empty());
    CHECK(carried_buffer(rights) == rights);
    CHECK(rights != no_rights);
    CHECK(rights != std::string(rights_length, 'Z'));
    CHECK_FALSE(rights.starts_with("XX"));
    CHECK(rights.find('\0') == std::string::npos);
  }
}

}  // namespace
}  // namespace lineweir::server
