#include "platform/scripted/scripted_system_clock.h"

#include <doctest/doctest.h>

#include "base/failure.h"
#include "platform/scripted/virtual_event_loop.h"

namespace lineweir::platform {
namespace {

struct ClockFixture {
  VirtualEventLoop loop;
  ScriptedSystemClock clock{loop};
};

TEST_CASE_FIXTURE(ClockFixture, "The clock begins on a Monday morning and goes with the loop") {
  CHECK(clock.now() == DateTime{2026, 1, 5, 10, 0, 0});
  loop.advance(Milliseconds(999));
  CHECK(clock.now() == DateTime{2026, 1, 5, 10, 0, 0});
  loop.advance(Milliseconds(1));
  CHECK(clock.now() == DateTime{2026, 1, 5, 10, 0, 1});
  loop.advance(std::chrono::hours(14));
  CHECK(clock.now() == DateTime{2026, 1, 6, 0, 0, 1});
}

TEST_CASE_FIXTURE(ClockFixture, "Setting the clock doesn't move the loop") {
  loop.advance(Milliseconds(1500));
  clock.set({2024, 2, 29, 23, 59, 59});
  CHECK(loop.now() == Milliseconds(1500));
  CHECK(clock.now() == DateTime{2024, 2, 29, 23, 59, 59});
  loop.advance(Milliseconds(1000));
  CHECK(clock.now() == DateTime{2024, 3, 1, 0, 0, 0});
}

TEST_CASE_FIXTURE(ClockFixture, "Only what the console sets is kept") {
  clock.put({2026, 1, 5, 12, 0, 0});
  clock.set({2026, 1, 5, 13, 0, 0});
  CHECK(clock.take_settings() == std::vector<DateTime>{{2026, 1, 5, 13, 0, 0}});
  CHECK(clock.take_settings().empty());
}

TEST_CASE_FIXTURE(ClockFixture, "A moment that the calendar doesn't have is refused") {
  for (const DateTime& moment :
       {DateTime{2026, 2, 29, 0, 0, 0}, DateTime{2026, 13, 1, 0, 0, 0},
        DateTime{2026, 1, 0, 0, 0, 0}, DateTime{2026, 1, 1, 24, 0, 0},
        DateTime{2026, 1, 1, 0, 60, 0}, DateTime{2026, 1, 1, 0, 0, -1}, DateTime{-5, 1, 1, 0, 0, 0},
        DateTime{99999, 1, 1, 0, 0, 0}, DateTime{2026, -1, -1, 0, 0, 0}}) {
    CHECK_THROWS_AS(clock.set(moment), Failure);
  }
  CHECK(clock.now() == DateTime{2026, 1, 5, 10, 0, 0});
  CHECK(clock.take_settings().empty());
}

}  // namespace
}  // namespace lineweir::platform
