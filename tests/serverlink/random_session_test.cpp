#include <doctest/doctest.h>

#include <random>

#include "support/session_steps.h"

namespace lineweir {
namespace {

TEST_CASE("a session of frames with any fields in any order leaves the console whole") {
  constexpr int sessions = 150;
  int ended = 0;
  for (int seed = 0; seed < sessions; ++seed) {
    CAPTURE(seed);
    std::mt19937 random(static_cast<unsigned>(seed));
    std::vector<std::uint8_t> bytes(2000);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random() % 256);
    test::ScriptedConsole desk;
    test::SessionSteps(desk).play(bytes);
    if (desk.platform.ended) {
      ++ended;
      continue;
    }
    const int lines = desk.console.lines.LineCount;
    CHECK((lines == 10 || lines == 20));
    CHECK(desk.console.Lineweir.LineName.upper_bound() >= lines);
    // All waits are over and the show goes on.
    CHECK(desk.console.Lineweir.mouse_pointer == pointer_default);
    const std::string before = desk.console.Lineweir.RealTime.caption;
    desk.console.Lineweir.Timer1.enabled = true;
    desk.platform.loop.advance(platform::Milliseconds(3000));
    CHECK(desk.console.Lineweir.RealTime.caption != before);
  }
  // A server may end the program; most of these don't.
  CHECK(ended < sessions / 2);
}

}  // namespace
}  // namespace lineweir
