#include <doctest/doctest.h>

#include "clocks/plan_builder.h"
#include "clocks/show_timing.h"

namespace lineweir::test {
namespace {

const ShownEvent hourly_before = {"00:11:22", "As it was"};

// The texts shown are the plan's own, so it must outlive the result.
ShowTiming hourly_timing_at(const ShowPlan& plan, std::string_view time, int offset = 0) {
  return local_show_timing(plan, at(time), offset, hourly_before);
}

// The hour closes exactly: the wrap counts to xx:05:00, where the show begins anew.
const ShowPlan closing_show = plan_of(
    "xx:05:00", "xx:05:00", {{"xx:20:00", "News"}, {"xx:40:00", "Music"}, {"xx:55:00", "Talk"}});

TEST_SUITE("clocks/show timing/hourly show") {
  TEST_CASE("the hour is taken out of every comparison") {
    for (const char* time : {"00:10:00", "14:10:00", "23:10:00"}) {
      CAPTURE(time);
      CHECK(hourly_timing_at(closing_show, time).shown == ShownEvent{"00:10:00", "Music"});
    }
  }

  TEST_CASE("before its first minute the clock counts down to Show Start in every hour") {
    const ShowTiming timing = hourly_timing_at(closing_show, "14:00:00");
    CHECK(timing.shown == ShownEvent{"00:05:00", "Show Start"});
    CHECK(timing.event_length == 0);
    CHECK(timing.trimmed_times.none());
  }

  TEST_CASE("the first event counts from Show Start") {
    const ShowTiming timing = hourly_timing_at(closing_show, "14:05:00");
    CHECK(timing.this_event == 3);
    CHECK(timing.event_length == 15 * 60);
    CHECK(timing.shown == ShownEvent{"00:15:00", "Music"});
  }

  TEST_CASE("later events count from the boundary before") {
    const ShowTiming timing = hourly_timing_at(closing_show, "14:40:00");
    CHECK(timing.this_event == 5);
    CHECK(timing.event_length == 15 * 60);
    CHECK(timing.shown == ShownEvent{"00:15:00", ""});
  }

  TEST_CASE("after the last event the clock counts to Show End in the next hour and names row 1") {
    const ShowTiming timing = hourly_timing_at(closing_show, "14:55:00");
    CHECK(timing.this_event == 6);
    CHECK(timing.shown == ShownEvent{"00:10:00", "News"});
    CHECK(timing.event_length == at("01:05:00") - at("00:55:00"));
  }

  TEST_CASE("an hourly show is never over") {
    CHECK(
        hourly_timing_at(plan_of("xx:00:00", "xx:10:00", {{"xx:05:00", "A"}}), "14:30:00").shown ==
        ShownEvent{"00:40:00", "A"});
  }

  TEST_CASE("a blank Show End is stored as xx:59:59, and the wrap exceeds the hour") {
    ShowPlan plan = plan_of("xx:00:00", "", {{"xx:10:00", "A"}});
    const ShowTiming timing = hourly_timing_at(plan, "14:10:00");
    CHECK(timing.shown == ShownEvent{"01:49:59", "A"});
    CHECK(timing.event_length == at("01:59:59") - at("00:10:00"));
    store_back(timing, plan);
    CHECK(plan.ShowTimes(2).text() == "xx:59:59   ");
  }

  TEST_CASE("a countdown of exactly one hour reads 00:00:00") {
    const ShowPlan plan = plan_of("xx:00:00", "xx:10:00", {{"xx:10:00", "A"}});
    CHECK(hourly_timing_at(plan, "14:10:00").shown.countdown == "00:00:00");
    CHECK(hourly_timing_at(plan, "14:10:01").shown.countdown == "00:59:59");
    CHECK(hourly_timing_at(plan_of("xx:00:00", "xx:11:00", {{"xx:10:00", "A"}}), "14:10:59")
              .shown.countdown == "01:00:01");
  }

  TEST_CASE("a show without events counts from Show Start to the next hour") {
    const ShowPlan plan = plan_of("xx:10:00", "xx:30:00");
    const ShowTiming timing = hourly_timing_at(plan, "14:20:00");
    CHECK(timing.this_event == 3);
    CHECK(timing.shown == ShownEvent{"01:10:00", ""});
    CHECK(timing.event_length == at("01:30:00") - at("00:10:00"));
  }

  TEST_CASE("behind a row that ends with the show the length counts from the row before it") {
    const ShowPlan plan =
        plan_of("xx:00:00", "xx:30:00", {{"xx:10:00", "A"}, {"xx:20:00", "B"}, {"xx:30:00", "C"}});
    const ShowTiming timing = hourly_timing_at(plan, "14:30:00");
    CHECK(timing.this_event == 6);
    CHECK(timing.event_length == at("01:30:00") - at("00:20:00"));
  }

  TEST_CASE("an entry that is only begun counts as blank") {
    const ShowPlan plan = plan_of("xx:00:00", "xx:00:00", {{"xx:", "A"}});
    CHECK(hourly_timing_at(plan, "14:10:00").shown == ShownEvent{"00:50:00", "A"});
  }

  TEST_CASE("a time that is cut short fails") {
    const ShowPlan plan = plan_of("xx:00:00", "xx:00:00", {{"xx:1", "A"}});
    CHECK(hourly_timing_at(plan, "14:10:00").failure == failure_number::type_mismatch);
    CHECK(hourly_timing_at(plan_of("x", ""), "14:10:00").failure == failure_number::type_mismatch);
    CHECK(hourly_timing_at(plan_of("xx:00:00", "xx"), "14:10:00").failure ==
          failure_number::type_mismatch);
  }

  TEST_CASE("the offset carries over the hour, where the list fails at its end") {
    const ShowPlan plan = plan_of("xx:00:00", "xx:00:00", {{"xx:10:00", "A"}});
    CHECK(hourly_timing_at(plan, "14:59:49", 10).shown == ShownEvent{"00:00:01", "A"});
    const ShowTiming beyond = hourly_timing_at(plan, "14:59:50", 10);
    CHECK(beyond.tick == TickGoesOn::Fails);
    CHECK(beyond.failure == failure_number::out_of_range);
    CHECK(beyond.shown == ShownEvent{"00:00:00", "A"});
    CHECK(hourly_timing_at(plan, "15:00:00", 10).shown == ShownEvent{"00:09:50", ""});
  }

  TEST_CASE("a full list whose last boundary is past shows the text of entry 1 and fails") {
    ShowPlan plan = plan_of("xx:00:00", "xx:59:59");
    for (int entry = 3; entry <= 42; ++entry) plan.ShowTimes(entry) = "xx:30:00";
    const ShowTiming timing = hourly_timing_at(plan, "14:40:00");
    CHECK(timing.failure == failure_number::out_of_range);
    CHECK(timing.shown == ShownEvent{"00:10:00", ""});
  }

  TEST_CASE("the last row of a full list runs to its end") {
    ShowPlan plan = plan_of("xx:00:00", "xx:59:59");
    for (int entry = 3; entry <= 41; ++entry) plan.ShowTimes(entry) = "xx:30:00";
    plan.ShowTimes(42) = "xx:50:00";
    const ShowTiming timing = hourly_timing_at(plan, "14:40:00");
    CHECK(timing.failure == 0);
    CHECK(timing.shown == ShownEvent{"00:10:00", ""});
  }

  TEST_CASE("hours other than xx are taken out too") {
    const ShowPlan plan = plan_of("xx:00:00", "12:30:00", {{"09:15:00", "A"}});
    CHECK(hourly_timing_at(plan, "14:10:00").shown.countdown == "00:05:00");
    CHECK(hourly_timing_at(plan, "14:20:00").shown.countdown == "01:10:00");
  }

  TEST_CASE("what is walked and shown is stored back trimmed") {
    ShowPlan plan = plan_of(" xx:00:00", " xx:00:00", {{" xx:10:00", " A"}, {" xx:20:00", " B"}});
    ShowTiming timing = hourly_timing_at(plan, "14:05:00");
    store_back(timing, plan);
    CHECK(plan.ShowTimes(2).text() == "xx:00:00   ");
    CHECK(plan.ShowTimes(3).text() == "xx:10:00   ");
    CHECK(plan.ShowTimes(4).text() == " xx:20:00  ");
    CHECK(plan.ShowTexts(4).text().front() == 'B');
    CHECK(plan.ShowTexts(3).text().front() == ' ');
    timing = hourly_timing_at(plan, "14:30:00");
    store_back(timing, plan);
    CHECK(plan.ShowTexts(3).text().front() == 'A');
  }
}

}  // namespace
}  // namespace lineweir::test
