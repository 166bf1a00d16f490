#include <doctest/doctest.h>

#include "store_desk.h"

using namespace lineweir;
using namespace lineweir::platform;

TEST_CASE("A scripted store that stalls answers nothing until it goes on, and then in order") {
  ScriptedDesk desk;
  std::string order;
  desk.store().stall(true);
  for (const char letter : {'a', 'b', 'c'}) {
    desk.store().write({event(letter)},
                       [&order, letter](bool written) { order += written ? letter : '-'; });
  }
  desk.loop().advance(std::chrono::hours(1));
  CHECK(order.empty());
  CHECK(desk.store().waiting() == 3);
  desk.store().stall(false);
  desk.loop().advance(Milliseconds{0});
  CHECK(order == "abc");
}

TEST_CASE("A scripted store takes the time that it was told, one work behind the other") {
  ScriptedDesk desk;
  desk.store().take(Milliseconds(30));
  int done = 0;
  for (int i = 0; i < 3; ++i) {
    desk.store().load([&](const auto&) { ++done; });
  }
  desk.loop().advance(Milliseconds(59));
  CHECK(done == 1);
  desk.loop().advance(Milliseconds(31));
  CHECK(done == 3);
}

TEST_CASE("A scripted store that fails does nothing, and tells when its trouble begins and ends") {
  ScriptedDesk desk;
  std::vector<std::string> troubles;
  desk.store().on_trouble = [&](const std::string& told) { troubles.push_back(told); };
  desk.store().fail(true);
  CHECK_FALSE(desk.write({event(1)}));
  CHECK_FALSE(desk.load());
  CHECK_FALSE(desk.calls());
  CHECK_FALSE(desk.audit());
  CHECK_FALSE(desk.verify());
  CHECK(desk.backup("b") != "");
  CHECK(desk.restore("b") != "");
  desk.store().fail(false);
  CHECK(desk.audit()->empty());
  CHECK(troubles == std::vector<std::string>{"The store can't be reached.", ""});
}

TEST_CASE("A scripted store fails by its seed, and does half of what it tells to have failed") {
  const auto run = [](std::uint64_t seed) {
    ScriptedDesk desk;
    desk.store().misbehave(seed, 0.3, Milliseconds(50));
    std::string told;
    for (int i = 0; i < 400; ++i) {
      desk.store().write({event(i)}, [&](bool written) { told += written ? '+' : '-'; });
    }
    desk.loop().advance(std::chrono::minutes(1));
    const auto failed = std::ranges::count(told, '-');
    CHECK(failed > 80);
    CHECK(failed < 160);
    const auto done = static_cast<std::ptrdiff_t>(desk.store().content().audit.size());
    CHECK(done > 400 - failed);
    CHECK(done < 400);
    return told;
  };
  CHECK(run(1) == run(1));
  CHECK(run(1) != run(2));
}

TEST_CASE("What waits for a scripted store is lost with its server, and what was done stays") {
  ScriptedDesk desk;
  desk.store().take(Milliseconds(10));
  int told = 0;
  for (int i = 0; i < 3; ++i) {
    desk.store().write({event(i)}, [&](bool) { ++told; });
  }
  desk.loop().advance(Milliseconds(15));
  desk.store().forget_what_waits();
  desk.loop().advance(std::chrono::hours(1));
  CHECK(told == 1);
  CHECK(desk.audit()->size() == 1);
}
