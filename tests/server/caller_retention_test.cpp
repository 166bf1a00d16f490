#include <doctest/doctest.h>

#include <algorithm>

#include "server/returning_caller.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;

TEST_CASE(
    "each night it is forgotten who called before the configured days, and the audit says so") {
  for (const auto what :
       {platform::Store::Forgetting::Callers, platform::Store::Forgetting::Calls}) {
    ServerOptions options = ServerRoom::two_studios();
    options.retention = {.days = 3, .what = what};
    ServerRoom room(options);
    {
      auto host = room.seat("host");
      for (int i = 0; i < 3; ++i) whole_call(room, *host, i);
    }
    const auto known = [&] { return room.store.content().caller_history("3125550100").calls; };
    room.wait(48h);
    CHECK(known() == 3);
    room.wait(48h);
    CHECK(known() == 0);
    const bool whole = what == platform::Store::Forgetting::Calls;
    CHECK(room.store.content().calls.size() == (whole ? 0 : 3));
    const auto& audit = room.store.content().audit;
    CHECK(std::ranges::count_if(audit, [&](const platform::AuditEntry& entry) {
            return entry.event.action == (whole ? "calls forgotten" : "callers forgotten") &&
                   entry.event.detail.starts_with("3 calls that ended before ");
          }) == 1);
    CHECK(room.store.content().verdict().first_wrong == 0);
  }
}

TEST_CASE("what a store that is away couldn't forget is forgotten once it is back") {
  ServerOptions options = ServerRoom::two_studios();
  options.retention = {.days = 1};
  ServerRoom room(options);
  {
    auto host = room.seat("host");
    whole_call(room, *host, 1);
  }
  room.wait(26h);
  room.store.fail(true);
  room.wait(24h);
  const auto known = [&] { return room.store.content().caller_history("3125550100").calls; };
  CHECK(known() == 1);
  room.store.fail(false);
  room.wait(6min);
  CHECK(known() == 0);
}

TEST_CASE("a night's turn comes also behind a start shortly before it") {
  ServerOptions options = ServerRoom::two_studios();
  options.retention = {.days = 1};
  ServerRoom room(options);
  const auto hour = [&] { return room.clock.local(room.clock.now()).hour; };
  while (hour() != 2) room.wait(10min);
  {
    auto host = room.seat("host");
    whole_call(room, *host, 1);
  }
  // At one it isn't due yet, at four it is.
  while (hour() != 1) room.wait(10min);
  room.crash();
  room.start();
  const auto known = [&] { return room.store.content().caller_history("3125550100").calls; };
  while (hour() != 3) room.wait(10min);
  CHECK(known() == 1);
  while (hour() != 5) room.wait(10min);
  CHECK(known() == 0);
}

}  // namespace
}  // namespace lineweir::server
