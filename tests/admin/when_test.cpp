#include "admin/when.h"

#include <doctest/doctest.h>
#include <stdlib.h>
#include <time.h>

using namespace lineweir::admin;
using namespace std::chrono_literals;

namespace {

// For the whole program; a test that needs another zone sets it back.
class TimeZone {
 public:
  explicit TimeZone(const char* name) { set(name); }
  ~TimeZone() { set("UTC"); }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;

 private:
  static void set(const char* name) {
    ::setenv("TZ", name, 1);
    ::tzset();
  }
};

// 2026-01-31 18:05:30 UTC.
constexpr Moment now{1'769'882'730'250};

}  // namespace

TEST_CASE("A date is its beginning, a date with a time of day that moment, by the time zone") {
  const TimeZone zone("EST5");
  CHECK(parse_when("2026-01-31", now) == Moment{1'769'835'600'000});
  CHECK(parse_when("2026-01-31 13:05", now) == Moment{1'769'882'700'000});
  CHECK(parse_when("2026-01-31T13:05:30", now) == Moment{1'769'882'730'000});
  CHECK(parse_when("2026-01-31T18:05:30Z", now) == Moment{1'769'882'730'000});
  CHECK(parse_when("1969-12-31", now) == Moment{0});
}

TEST_CASE("A time ago is counted back from now, and never to before 1970") {
  CHECK(parse_when("0s", now) == now);
  CHECK(parse_when("30s", now) == now - 30s);
  CHECK(parse_when("30m", now) == now - 30min);
  CHECK(parse_when("2h", now) == now - 2h);
  CHECK(parse_when("7d", now) == now - std::chrono::days(7));
  CHECK(parse_when("3w", now) == now - std::chrono::weeks(3));
  CHECK(parse_when("99999999w", now) == Moment{0});
}

TEST_CASE("What is no moment is none") {
  for (const char* text : {"",
                           "h",
                           "2",
                           "2x",
                           "2hh",
                           "-2h",
                           "2.5h",
                           "999999999999999999999s",
                           "2026",
                           "2026-1-31",
                           "2026-02-30",
                           "2026-13-01",
                           "2026-00-01",
                           "2026-01-31 ",
                           "2026-01-31 24:00",
                           "2026-01-31 18:60",
                           "2026-01-31 18:05:60",
                           "2026-01-31 18",
                           "2026-01-31 18:05x",
                           "2026-01-31Z",
                           "-026-01-31",
                           "2026-01-31 -1:05",
                           "yesterday"}) {
    CAPTURE(text);
    CHECK_FALSE(parse_when(text, now));
  }
}

TEST_CASE("A moment is shown by the time zone, or by UTC with its thousandths") {
  const TimeZone zone("EST5");
  CHECK(local_time(now) == "2026-01-31 13:05:30");
  CHECK(local_time(Moment{0}) == "");
  CHECK(utc_time(now) == "2026-01-31T18:05:30.250Z");
  CHECK(utc_time(Moment{7}) == "1970-01-01T00:00:00.007Z");
}
