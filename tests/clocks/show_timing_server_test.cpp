#include <doctest/doctest.h>

#include "clocks/plan_builder.h"
#include "clocks/show_timing.h"

namespace lineweir::test {
namespace {

const ShownEvent server_before = {"00:11:22", "As it was"};

ShowTiming server_timing_at(const ServerEvent& event, std::string_view time, int offset = 0) {
  return server_show_timing(event, at(time), offset, server_before);
}

TEST_SUITE("clocks/show timing/server") {
  TEST_CASE("the clock counts down to the server's event") {
    const ShowTiming timing = server_timing_at({"14:00:00", "14:20:00", "Weather"}, "14:05:00");
    CHECK(timing.shown == ShownEvent{"00:15:00", "Weather"});
    CHECK(timing.event_length == 20 * 60);
    CHECK(timing.tick == TickGoesOn::Whole);
  }

  TEST_CASE("half days and blanks are read") {
    const ShowTiming timing =
        server_timing_at({"2:00:00 PM ", "02:20:00 PM", "Weather"}, "14:05:00", 5);
    CHECK(timing.shown.countdown == "00:14:55");
    CHECK(timing.event_length == 20 * 60);
  }

  TEST_CASE("with no time left the texts go and the hand rests at twelve") {
    for (const char* time : {"14:20:00", "14:20:01", "23:00:00"}) {
      const ShowTiming timing = server_timing_at({"14:00:00", "14:20:00", "Weather"}, time);
      CHECK(timing.shown == ShownEvent{});
      CHECK(timing.tick == TickGoesOn::HandAtTwelve);
      CHECK(timing.event_length == 0);
    }
  }

  TEST_CASE("without a time for the event all stays as it was") {
    for (const char* time : {"", "soon", "14:60:00"}) {
      const ShowTiming timing = server_timing_at({"14:00:00", time, "Weather"}, "14:05:00");
      CHECK(timing.shown == server_before);
      CHECK(timing.tick == TickGoesOn::WithoutHand);
    }
  }

  TEST_CASE("without a time for the event before only the hand stays as it was") {
    const ShowTiming timing = server_timing_at({"", "14:20:00", "Weather"}, "14:05:00");
    CHECK(timing.shown == ShownEvent{"00:15:00", "Weather"});
    CHECK(timing.tick == TickGoesOn::WithoutHand);
  }

  TEST_CASE("a length beyond 16 bits leaves only the hand as it was") {
    const ShowTiming timing = server_timing_at({"01:00:00", "14:20:00", "Weather"}, "14:05:00");
    CHECK(timing.shown == ShownEvent{"00:15:00", "Weather"});
    CHECK(timing.event_length == 0);
    CHECK(timing.tick == TickGoesOn::WithoutHand);
  }
}

}  // namespace
}  // namespace lineweir::test
