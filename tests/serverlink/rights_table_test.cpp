#include "serverlink/rights_table.h"

#include <doctest/doctest.h>

#include <set>

#include "support/scripted_console.h"
#include "wire/rights_layout.h"

namespace lineweir::test {
namespace {

using NameSet = std::set<std::string>;

std::string every_known_right() {
  std::string rights;
  for (const RightPlace& place : rights_layout) {
    const bool forces =
        place.right == Right::ForcePassiveOff || place.right == Right::ForcePassiveOn;
    rights = with_right(rights, place.right, !forces);
  }
  return rights;
}

// What is kept from a user who lacks this right alone.
NameSet withheld_without(Right right) {
  ScriptedConsole desk;
  desk.console.login.UserRights = with_right(every_known_right(), right, false);
  desk.console.access_rights.SetRights();
  CHECK(desk.take_trace().empty());
  NameSet names;
  for (const Element* element : desk.console.Lineweir.elements()) {
    const auto* item = dynamic_cast<const MenuItem*>(element);
    const auto* picture = dynamic_cast<const Picture*>(element);
    if ((item != nullptr && item->withheld) || (picture != nullptr && picture->withheld)) {
      names.insert(element->name());
    }
  }
  if (!desk.console.program.CallerDataAllowed) names.insert("CallerDataAllowed");
  if (!desk.console.program.MessagesAllowed) names.insert("MessagesAllowed");
  if (!desk.console.program.CallerFlagAllowed) names.insert("CallerFlagAllowed");
  if (!desk.console.program.RemoteNextAllowed) names.insert("RemoteNext");
  return names;
}

TEST_SUITE("serverlink/rights table") {
  TEST_CASE("a right that is missing takes away what has its name, and nothing else") {
    for (const RightPlace& place : rights_layout) {
      const std::string name(place.name);
      CAPTURE(name);
      const bool forces = name.starts_with("ForcePassive");
      CHECK(withheld_without(place.right) == (forces ? NameSet{} : NameSet{name}));
    }
  }
}

}  // namespace
}  // namespace lineweir::test
