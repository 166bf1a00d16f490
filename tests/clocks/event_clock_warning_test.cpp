#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "clocks/clock_fixture.h"
#include "support/listen.h"

namespace lineweir::test {
namespace {

class WarningConsole : public ClockConsole {
 public:
  WarningConsole() : ClockConsole("D") {
    console.trace.on_line = [this](const std::string& line) { trace.push_back(line); };
  }

  void count(std::string_view left) { form.CountDownTime.caption = left; }

  bool is_red() const {
    CHECK(form.CountDownTime2.fore_color == (form.RedClock.visible ? color_red : color_black));
    return form.RedClock.visible;
  }
  bool blinks() const { return form.Timer2.enabled; }

  std::vector<std::string> trace;
};

const std::vector<std::string> warning_of_mismatch = {
    "Lineweir_CountDownTime_Change Error - Type mismatch"};

TEST_SUITE("clocks/event clock warning") {
  TEST_CASE("the clock turns red at the warning itself and not a second before") {
    WarningConsole test;
    test.count("00:00:31");
    CHECK_FALSE(test.is_red());
    test.count("00:00:30");
    CHECK(test.is_red());
    CHECK_FALSE(test.blinks());
  }

  TEST_CASE("the blink begins at the second warning and leaves the dial red") {
    WarningConsole test;
    test.count("00:00:30");
    test.count("00:00:11");
    CHECK_FALSE(test.blinks());
    test.count("00:00:10");
    CHECK(test.blinks());
    CHECK(test.is_red());
  }

  TEST_CASE("while it blinks a change of the countdown leaves the dial to the blink") {
    WarningConsole test;
    test.count("00:00:10");
    test.console.Lineweir.Timer2.on_timer();
    CHECK_FALSE(test.is_red());
    test.count("00:00:09");
    CHECK_FALSE(test.is_red());
    CHECK(test.blinks());
  }

  TEST_CASE("an empty countdown, or one above the warning, ends both") {
    for (const char* end : {"", "  ", "00:20:00"}) {
      CAPTURE(end);
      WarningConsole test;
      test.count("00:00:05");
      REQUIRE(test.blinks());
      test.count(end);
      CHECK_FALSE(test.is_red());
      CHECK_FALSE(test.blinks());
    }
  }

  TEST_CASE("equal warnings go straight into the blink") {
    WarningConsole test;
    test.state.Warning1 = 20;
    test.state.Warning2 = 20;
    test.count("00:00:21");
    CHECK_FALSE(test.is_red());
    test.count("00:00:20");
    CHECK(test.is_red());
    CHECK(test.blinks());
  }

  TEST_CASE("a second warning above the first blinks before the clock is red") {
    WarningConsole test;
    test.state.Warning2 = 40;
    test.count("00:00:35");
    CHECK_FALSE(test.is_red());
    CHECK(test.blinks());
  }

  TEST_CASE("a warning of 59 seconds holds from one minute less a second on") {
    WarningConsole test;
    test.state.Warning1 = 59;
    test.count("00:01:00");
    CHECK_FALSE(test.is_red());
    test.count("00:00:59");
    CHECK(test.is_red());
  }

  TEST_CASE("a warning that makes no time is reported, the first before anything is done") {
    WarningConsole test;
    test.state.Warning1 = 3599;
    test.count("00:00:05");
    CHECK_FALSE(test.is_red());
    CHECK_FALSE(test.blinks());
    CHECK(test.trace == warning_of_mismatch);
  }

  TEST_CASE("the second warning fails after the first has held") {
    WarningConsole test;
    test.state.Warning2 = -7;
    test.count("00:00:05");
    CHECK(test.is_red());
    CHECK_FALSE(test.blinks());
    CHECK(test.trace == warning_of_mismatch);
  }

  TEST_CASE("a blink is one second: half of it red, with the hand at the design's place") {
    WarningConsole test;
    test.form.RedClock.left = 400;
    test.count("00:00:10");
    test.console.Lineweir.Timer2.on_timer();
    CHECK_FALSE(test.is_red());
    test.form.CounterHand.x2 = 1000;
    test.form.CounterHand.y2 = 1200;
    test.console.Lineweir.Timer2.on_timer();
    CHECK(test.is_red());
    CHECK(test.form.RedHand.x2 == 1000 - 205);
    CHECK(test.form.RedHand.y2 == 1200 - 375);
    CHECK(test.form.Timer2.interval == 500);
  }

  TEST_CASE("the change runs once a second and not ten times") {
    WarningConsole test;
    test.plan = plan_of("09:00:00", "11:00:00", {{"10:10:00", ""}, {"10:20:00", ""}});
    test.put_clock("10:15:00");
    int changes = 0;
    const auto change = test.form.CountDownTime.on_change;
    listen(test.form.CountDownTime.on_change, [&] {
      ++changes;
      change();
    });
    test.platform.loop.advance(platform::Milliseconds(10000));
    CHECK(changes == 11);
  }
}

}  // namespace
}  // namespace lineweir::test
