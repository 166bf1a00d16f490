#include "clocks/clock_engine.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <vector>

#include "clocks/clock_fixture.h"
#include "support/recording_watch.h"

namespace lineweir::test {
namespace {

// The console, its trace, and how often the tick went through to its end.
class TickingConsole : public ClockConsole {
 public:
  TickingConsole() : ClockConsole("D") {
    console.clocks.after_tick = [this] { ++ticks_ended; };
    console.trace.on_line = [this](const std::string& line) { trace.push_back(line); };
  }

  std::vector<std::string> take_trace() { return std::exchange(trace, {}); }

  int ticks_ended = 0;
  std::vector<std::string> trace;
};

HandPoint far_end(const Line& hand) { return {hand.x2, hand.y2}; }

HandPoint at_angle(const Line& hand, int radius, double degrees) {
  return hand_end(radius, degrees, {hand.x1, hand.y1});
}

const std::vector<std::string> type_mismatch = {"Lineweir_Timer1_Timer Error - Type mismatch"};

TEST_SUITE("clocks/clock engine") {
  TEST_CASE("the lengths of the hands are those of the design") {
    TickingConsole test;
    CHECK(test.state.SecondRadius == 560);
    CHECK(test.state.MinuteRadius == 480);
    CHECK(test.state.HourRadius == 330);
  }

  TEST_CASE("the time of day is the twelve-hour time without its half day") {
    TickingConsole test;
    test.tick_at("15:04:05");
    CHECK(test.form.RealTime.caption == "03:04:05");
    CHECK(test.form.RealTime2.text == "03:04:05");
    test.tick_at("00:00:00");
    CHECK(test.form.RealTime.caption == "12:00:00");
  }

  TEST_CASE("the offset moves the time of day, over midnight too") {
    TickingConsole test;
    test.state.DelayOffset = 12;
    test.tick_at("23:59:50");
    CHECK(test.form.RealTime.caption == "12:00:02");
    test.state.DelayOffset = 9;
    test.tick_at("10:00:00");
    CHECK(test.form.RealTime.caption == "10:00:09");
  }

  TEST_CASE("an offset that is no time ends each tick before anything is shown") {
    for (const int offset : {-1, 60, 1000}) {
      CAPTURE(offset);
      TickingConsole test;
      test.tick_at("10:00:00");
      test.state.DelayOffset = offset;
      test.tick_at("11:00:00");
      CHECK(test.form.RealTime.caption == "10:00:00");
      CHECK(test.ticks_ended == 1);
      CHECK(test.take_trace() == type_mismatch);
    }
  }

  TEST_CASE("the hands stand as the twelve-hour text says") {
    TickingConsole test;
    test.tick_at("21:20:30");
    CHECK(far_end(test.form.SecondHand) == at_angle(test.form.SecondHand, 560, 90));
    CHECK(far_end(test.form.MinuteHand) == at_angle(test.form.MinuteHand, 480, 6 * 20.5 - 90));
    CHECK(far_end(test.form.HourHand) ==
          at_angle(test.form.HourHand, 330, 30 * (9 + 20.5 / 60) - 90));
    CHECK(test.form.SecondHand.x1 == 848);
    CHECK(test.form.SecondHand.y1 == 1018);
  }

  TEST_CASE("an empty plan leaves clock texts and hand alone, and the time clock goes on") {
    TickingConsole test;
    test.form.CountDownTime.caption = "00:01:40";
    test.form.StatusText.caption = "As it was";
    const HandPoint hand = far_end(test.form.CounterHand);
    test.tick_at("10:00:01");
    CHECK(test.form.CountDownTime.caption == "00:01:40");
    CHECK(test.form.StatusText.caption == "As it was");
    CHECK(far_end(test.form.CounterHand) == hand);
    CHECK(test.form.RealTime.caption == "10:00:01");
    CHECK(test.ticks_ended == 1);
  }

  TEST_CASE("a running show is shown on the dial and in large type") {
    TickingConsole test;
    test.plan = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}, {"10:30:00", "B"}});
    test.tick_at("10:15:00");
    CHECK(test.form.CountDownTime.caption == "00:15:00");
    CHECK(test.form.CountDownTime2.text == "00:15:00");
    test.plan.ShowTexts(5) = "C";
    test.tick_at("10:15:01");
    CHECK(test.form.StatusText.caption == "C");
    CHECK(test.form.StatusText2.text == "C");
  }

  TEST_CASE("the event hand turns with the event, two wide") {
    TickingConsole test;
    test.plan = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}, {"10:30:00", "B"}});
    test.tick_at("10:15:00");
    CHECK(far_end(test.form.CounterHand) == at_angle(test.form.CounterHand, 560, -270 - 90));
    CHECK(test.form.CounterHand.border_width == 2);
  }

  TEST_CASE("the first event of a timed show turns the hand the other way") {
    TickingConsole test;
    test.plan = plan_of("10:00:00", "11:00:00", {{"10:20:00", "A"}});
    test.tick_at("10:10:00");
    CHECK(far_end(test.form.CounterHand) ==
          at_angle(test.form.CounterHand, 560, 360.0 / 2400 * 600 - 90));
  }

  TEST_CASE("in the last minute the hand sweeps one turn as a thin line") {
    TickingConsole test;
    test.form.RedHand.border_width = 3;
    test.plan = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}, {"10:30:00", "B"}});
    test.tick_at("10:28:59");
    CHECK(test.form.CounterHand.border_width == 2);
    CHECK(test.form.RedHand.border_width == 3);
    test.tick_at("10:29:00");
    CHECK(test.form.CounterHand.border_width == 1);
    CHECK(test.form.RedHand.border_width == 1);
    CHECK(far_end(test.form.CounterHand) == at_angle(test.form.CounterHand, 560, -450));
    test.tick_at("10:29:15");
    CHECK(far_end(test.form.CounterHand) == at_angle(test.form.CounterHand, 560, -360));
  }

  TEST_CASE("the next event makes the hand wide again, but not the red one") {
    TickingConsole test;
    test.plan =
        plan_of("10:00:00", "11:00:00", {{"10:10:00", ""}, {"10:30:00", ""}, {"10:50:00", ""}});
    test.tick_at("10:29:30");
    test.tick_at("10:30:00");
    CHECK(test.form.CounterHand.border_width == 2);
    CHECK(test.form.RedHand.border_width == 1);
  }

  TEST_CASE("while the red dial is visible its hand copies the event hand") {
    TickingConsole test;
    test.plan = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}, {"10:30:00", "B"}});
    test.tick_at("10:29:40");
    REQUIRE(test.form.RedClock.visible);
    const Line& hand = test.form.CounterHand;
    CHECK(test.form.RedHand.x1 == hand.x1 - 205);
    CHECK(test.form.RedHand.y1 == hand.y1 - 375);
    CHECK(test.form.RedHand.x2 == hand.x2 - 205);
    CHECK(test.form.RedHand.y2 == hand.y2 - 375);
  }

  TEST_CASE("the second of Show End is cut short: neither row clocks nor next caller") {
    TickingConsole test;
    test.plan = plan_of("10:00:00", "11:00:00", {{"11:00:00", "A"}});
    test.console.lines.ClockRunning(0) = 1;
    test.console.lines.ClockBase(0) = "10:00:00";
    test.tick_at("10:59:59");
    CHECK(test.form.LineTime(0).caption == "0:59:59");
    test.tick_at("11:00:00");
    CHECK(test.form.LineTime(0).caption == "0:59:59");
    CHECK(test.form.RealTime.caption == "11:00:00");
    CHECK(test.ticks_ended == 1);
    CHECK(test.take_trace().empty());
    test.tick_at("11:00:01");
    CHECK(test.form.LineTime(0).caption == "1:00:01");
    CHECK(test.form.CountDownTime.caption == "");
    CHECK(test.form.StatusText.caption == "Show Over");
  }

  TEST_CASE("behind the last row of a timed show the event clock stands and the tick is reported") {
    TickingConsole test;
    test.plan = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}});
    test.tick_at("10:09:59");
    test.tick_at("10:10:00");
    CHECK(test.form.CountDownTime.caption == "00:00:01");
    CHECK(test.form.RealTime.caption == "10:10:00");
    CHECK(test.ticks_ended == 1);
    CHECK(test.take_trace() == type_mismatch);
  }

  TEST_CASE("a countdown beyond 16 bits ends the tick before its hand turns") {
    TickingConsole test;
    test.plan = plan_of("xx:00:00", "xx:00:00");
    test.state.ServerEventTime = "23:00:00";
    test.state.ServerLastEventTime = "13:55:00";
    test.form.ServerShowData.checked = true;
    const HandPoint hand = far_end(test.form.CounterHand);
    test.tick_at("10:00:00");
    CHECK(test.form.CountDownTime.caption == "13:00:00");
    CHECK(test.form.CounterHand.border_width == 2);
    CHECK(far_end(test.form.CounterHand) == hand);
    CHECK(test.take_trace() == std::vector<std::string>{"Lineweir_Timer1_Timer Error - Overflow"});
    CHECK(test.ticks_ended == 0);
  }

  TEST_CASE("a blank Show End keeps its stored value for the rest of the run") {
    TickingConsole test;
    test.plan = plan_of("10:00:00", "", {{"10:10:00", "A"}});
    test.tick_at("10:00:00");
    CHECK(test.plan.ShowTimes(2).trimmed() == "23:59:59");
    test.plan = plan_of("xx:00:00", "", {{"xx:10:00", "A"}});
    test.tick_at("10:00:00");
    CHECK(test.plan.ShowTimes(2).trimmed() == "xx:59:59");
  }

  TEST_CASE("in server mode the plan isn't looked at") {
    TickingConsole test;
    test.plan = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}});
    test.form.ServerShowData.checked = true;
    test.state.ServerLastEventTime = "10:00:00";
    test.state.ServerEventTime = "10:20:00";
    test.state.ServerEventText = "From the server";
    test.tick_at("10:05:00");
    CHECK(test.form.CountDownTime.caption == "00:15:00");
    CHECK(test.form.StatusText.caption == "From the server");
    CHECK(test.form.StatusText2.text == "From the server");
    CHECK(far_end(test.form.CounterHand) == at_angle(test.form.CounterHand, 560, -270 - 90));
  }

  TEST_CASE("server mode without time left empties the texts and rests the hand") {
    TickingConsole test;
    test.form.ServerShowData.checked = true;
    test.state.ServerEventTime = "10:20:00";
    test.tick_at("10:20:00");
    CHECK(test.form.CountDownTime.caption == "");
    CHECK(test.form.StatusText.caption == "");
    CHECK(far_end(test.form.CounterHand) == resting_hand_end(560, {848, 1018}));
    CHECK(test.ticks_ended == 1);
  }

  TEST_CASE("a failure in server mode is quiet and goes on with the row clocks") {
    TickingConsole test;
    test.form.ServerShowData.checked = true;
    test.state.ServerEventTime = "soon";
    test.form.StatusText.caption = "As it was";
    test.tick_at("10:20:00");
    CHECK(test.form.StatusText.caption == "As it was");
    CHECK(test.ticks_ended == 1);
    CHECK(test.take_trace().empty());
  }

  TEST_CASE("row clocks count from their base, without the offset") {
    TickingConsole test;
    test.state.DelayOffset = 30;
    test.console.lines.ClockRunning(3) = 1;
    test.console.lines.ClockBase(3) = "09:58:30";
    test.console.lines.ClockBase(4) = "09:58:30";
    test.tick_at("10:00:00");
    CHECK(test.form.LineTime(3).caption == "0:01:30");
    CHECK(test.form.LineTime(4).caption == "");
  }

  TEST_CASE("a base behind the time of day prints the difference without its sign") {
    TickingConsole test;
    test.console.lines.ClockRunning(0) = 1;
    test.console.lines.ClockBase(0) = "23:59:50";
    test.tick_at("00:00:10");
    CHECK(test.form.LineTime(0).caption == "23:59:40");
  }

  TEST_CASE("a running line without a base shows what the line before it showed in this pass") {
    TickingConsole test;
    LineTable& lines = test.console.lines;
    for (int line = 0; line < 4; ++line) lines.ClockRunning(line) = 1;
    lines.ClockBase(0) = "  ";
    lines.ClockBase(1) = "09:00:00";
    lines.ClockBase(3) = "09:30:00";
    test.form.LineTime(0).caption = "9:99:99";
    test.tick_at("10:00:00");
    CHECK(test.form.LineTime(0).caption == "");
    CHECK(test.form.LineTime(1).caption == "1:00:00");
    CHECK(test.form.LineTime(2).caption == "1:00:00");
    CHECK(test.form.LineTime(3).caption == "0:30:00");
  }

  TEST_CASE("a base that is no time ends the tick") {
    TickingConsole test;
    test.console.lines.ClockRunning(0) = 1;
    test.console.lines.ClockBase(0) = "noon";
    test.tick_at("10:00:00");
    CHECK(test.ticks_ended == 0);
    CHECK(test.take_trace() == type_mismatch);
  }

  TEST_CASE("the tick comes ten times a second") {
    TickingConsole test;
    test.platform.loop.advance(platform::Milliseconds(1000));
    CHECK(test.ticks_ended == 10);
  }

  TEST_CASE("within a second nothing is told to those who watch the form") {
    TickingConsole test;
    test.plan = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}, {"10:30:00", "B"}});
    test.console.lines.ClockRunning(0) = 1;
    test.console.lines.ClockBase(0) = "10:00:00";
    test.tick_at("10:29:30");
    test.tick_at("10:29:30");
    RecordingWatch watch(test.form);
    test.tick_at("10:29:30");
    CHECK(watch.take().empty());
    test.tick_at("10:29:31");
    const auto told = watch.take();
    CHECK(std::ranges::count(told, "CountDownTime.Caption") == 1);
    CHECK(std::ranges::count(told, "CounterHand.BorderWidth") == 0);
  }
}

}  // namespace
}  // namespace lineweir::test
