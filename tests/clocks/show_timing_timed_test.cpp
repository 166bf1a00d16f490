#include <doctest/doctest.h>

#include "clocks/plan_builder.h"
#include "clocks/show_timing.h"

namespace lineweir::test {
namespace {

const ShownEvent before = {"00:11:22", "As it was"};

// The texts shown are the plan's own, so it must outlive the result.
ShowTiming timing_at(const ShowPlan& plan, std::string_view time, int offset = 0) {
  return local_show_timing(plan, at(time), offset, before);
}

const ShowPlan evening_show =
    plan_of("20:00:00", "21:00:00",
            {{"20:10:00", "Opening"}, {"20:30:00", "Guest"}, {"21:00:00", "Calls"}});

TEST_SUITE("clocks/show timing/timed show") {
  TEST_CASE("a plan whose start is neither a digit 0 to 2 nor an x leaves all as it was") {
    for (const char* start : {"", "3", "9:00:00", "abc", "X", "-"}) {
      CAPTURE(start);
      const ShowTiming timing = timing_at(plan_of(start, "21:00:00"), "20:00:00");
      CHECK(timing.shown == before);
      CHECK(timing.event_length == 0);
      CHECK(timing.this_event == 0);
      CHECK(timing.tick == TickGoesOn::Whole);
      CHECK(timing.trimmed_times.none());
    }
  }

  TEST_CASE("blanks before the start are passed over") {
    CHECK(show_mode(plan_of("  20:00:00", "")) == ShowMode::Timed);
    CHECK(show_mode(plan_of("  xx:00:00", "")) == ShowMode::Hourly);
    CHECK(timing_at(plan_of("  20:00:00", ""), "19:59:00").shown.countdown == "00:01:00");
  }

  TEST_CASE("before the show the clock counts down to Show Start, without a hand") {
    const ShowTiming timing = timing_at(evening_show, "18:30:15");
    CHECK(timing.shown == ShownEvent{"01:29:45", "Show Start"});
    CHECK(timing.event_length == 0);
    CHECK(timing.tick == TickGoesOn::Whole);
  }

  TEST_CASE("the text shown is that of the row which begins at the end of the countdown") {
    const ShowTiming first = timing_at(evening_show, "20:00:00");
    CHECK(first.shown == ShownEvent{"00:10:00", "Guest"});
    CHECK(first.this_event == 3);
    const ShowTiming second = timing_at(evening_show, "20:10:00");
    CHECK(second.shown == ShownEvent{"00:20:00", "Calls"});
    CHECK(second.this_event == 4);
    CHECK(timing_at(evening_show, "20:59:59").shown == ShownEvent{"00:00:01", ""});
  }

  TEST_CASE("the first event's length counts from Show End and is negative") {
    CHECK(timing_at(evening_show, "20:00:00").event_length == at("20:10:00") - at("21:00:00"));
    CHECK(timing_at(evening_show, "20:10:00").event_length == 20 * 60);
    CHECK(timing_at(evening_show, "20:30:00").event_length == 30 * 60);
  }

  TEST_CASE("in the second of Show End the whole tick ends and all stays as it was") {
    const ShowTiming timing = timing_at(evening_show, "21:00:00");
    CHECK(timing.tick == TickGoesOn::Ends);
    CHECK(timing.shown == before);
  }

  TEST_CASE("behind Show End the show is over and the countdown empty") {
    const ShowTiming timing = timing_at(evening_show, "21:00:01");
    CHECK(timing.shown == ShownEvent{"", "Show Over"});
    CHECK(timing.event_length == 0);
    CHECK(timing.tick == TickGoesOn::Whole);
  }

  TEST_CASE("a blank Show End is stored as 23:59:59") {
    ShowPlan plan = plan_of("20:00:00", "   ", {{"20:10:00", "Opening"}});
    const ShowTiming timing = timing_at(plan, "20:00:00");
    CHECK(timing.show_end == "23:59:59");
    CHECK(timing.event_length == at("20:10:00") - at("23:59:59"));
    store_back(timing, plan);
    CHECK(plan.ShowTimes(2).text() == "23:59:59   ");
    CHECK(timing_at(plan, "23:59:59").tick == TickGoesOn::Ends);
  }

  TEST_CASE("before the show a blank Show End stays blank") {
    ShowPlan plan = plan_of("20:00:00", "");
    store_back(timing_at(plan, "19:59:59"), plan);
    CHECK(plan.ShowTimes(2).trimmed().empty());
  }

  TEST_CASE("a list that stops before Show End fails and leaves the clock as it was") {
    const ShowPlan plan = plan_of("20:00:00", "21:00:00", {{"20:10:00", "Opening"}});
    const ShowTiming timing = timing_at(plan, "20:10:00");
    CHECK(timing.tick == TickGoesOn::Fails);
    CHECK(timing.failure == failure_number::type_mismatch);
    CHECK(timing.shown == before);
    CHECK(std::string(timing_failure(timing).what()) == "Type mismatch");
    CHECK(timing_at(plan, "20:59:59").tick == TickGoesOn::Fails);
    CHECK(timing_at(plan, "21:00:00").tick == TickGoesOn::Ends);
    CHECK(timing_at(plan, "21:00:01").shown.status == "Show Over");
  }

  TEST_CASE("a full list that stops before Show End fails beyond entry 42") {
    ShowPlan plan = plan_of("20:00:00", "21:00:00");
    for (int entry = 3; entry <= 42; ++entry) plan.ShowTimes(entry) = "20:30:00";
    const ShowTiming timing = timing_at(plan, "20:30:00");
    CHECK(timing.tick == TickGoesOn::Fails);
    CHECK(timing.failure == failure_number::out_of_range);
    CHECK(timing.shown == before);
  }

  TEST_CASE("entry 42 has no text behind it") {
    ShowPlan plan = plan_of("20:00:00", "21:00:00");
    for (int entry = 3; entry <= 41; ++entry) plan.ShowTimes(entry) = "20:30:00";
    plan.ShowTimes(42) = "20:40:00";
    plan.ShowTexts(42) = "Last";
    const ShowTiming timing = timing_at(plan, "20:30:00");
    CHECK(timing.this_event == 42);
    CHECK(timing.shown == ShownEvent{"00:10:00", ""});
    CHECK(timing.event_length == 10 * 60);
  }

  TEST_CASE("an event of more than 32767 seconds fails after its texts are shown") {
    const ShowPlan plan =
        plan_of("01:00:00", "23:00:00", {{"02:00:00", "A"}, {"12:00:00", "B"}, {"23:00:00", "C"}});
    const ShowTiming timing = timing_at(plan, "02:00:00");
    CHECK(timing.shown == ShownEvent{"10:00:00", "C"});
    CHECK(timing.event_length == 0);
    CHECK(timing.tick == TickGoesOn::Fails);
    CHECK(timing.failure == failure_number::overflow);
    CHECK(std::string(timing_failure(timing).what()) == "Overflow");
  }

  TEST_CASE("an event of exactly 32767 seconds is shown") {
    const ShowPlan plan = plan_of("01:00:00", "23:00:00", {{"02:00:00", "A"}, {"11:06:07", "B"}});
    CHECK(timing_at(plan, "02:00:00").event_length == 32767);
    const ShowPlan longer = plan_of("01:00:00", "23:00:00", {{"02:00:00", "A"}, {"11:06:08", "B"}});
    CHECK(timing_at(longer, "02:00:00").failure == failure_number::overflow);
  }

  TEST_CASE("the offset is added, and the sum isn't wrapped at midnight") {
    CHECK(timing_at(evening_show, "19:59:50", 10).shown.countdown == "00:10:00");
    CHECK(timing_at(evening_show, "20:59:50", 10).tick == TickGoesOn::Ends);
    const ShowPlan late = plan_of("20:00:00", "23:59:59", {{"23:59:59", "A"}});
    CHECK(timing_at(late, "23:59:59", 30).shown.status == "Show Over");
    CHECK(timing_at(late, "00:00:00", 30).shown.status == "Show Start");
  }

  TEST_CASE("walked times and the shown text are stored back trimmed") {
    ShowPlan plan =
        plan_of("20:00:00", " 21:00:00",
                {{" 20:10:00", " Opening"}, {" 20:30:00", " Guest"}, {" 21:00:00", ""}});
    const ShowTiming timing = timing_at(plan, "20:05:00");
    CHECK(timing.shown.status == "Guest");
    store_back(timing, plan);
    CHECK(plan.ShowTimes(2).text() == "21:00:00   ");
    CHECK(plan.ShowTimes(3).text() == "20:10:00   ");
    CHECK(plan.ShowTimes(4).text() == " 20:30:00  ");
    CHECK(plan.ShowTexts(3).trimmed() == "Opening");
    CHECK(plan.ShowTexts(3).text().front() == ' ');
    CHECK(plan.ShowTexts(4).text().substr(0, 6) == "Guest ");
  }

  TEST_CASE("times that are no time fail") {
    CHECK(timing_at(plan_of("29:00:00", ""), "20:00:00").tick == TickGoesOn::Fails);
    CHECK(timing_at(plan_of("20:00:00", "xx:00:00"), "20:00:00").tick == TickGoesOn::Fails);
    CHECK(timing_at(plan_of("20:00:00", "21:00:00", {{"20:61:00", ""}}), "20:00:00").failure ==
          failure_number::type_mismatch);
  }

  TEST_CASE("an event of no length leaves the hand alone") {
    const ShowPlan plan =
        plan_of("20:00:00", "21:00:00", {{"20:10:00", ""}, {"20:20:00", ""}, {"20:10:00", ""}});
    CHECK(timing_at(plan_of("20:00:00", "20:10:00", {{"20:10:00", ""}}), "20:05:00").event_length ==
          0);
    CHECK(timing_at(plan, "20:15:00").event_length == 10 * 60);
  }
}

}  // namespace
}  // namespace lineweir::test
