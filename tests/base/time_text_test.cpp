#include "base/time_text.h"

#include <doctest/doctest.h>

#include "base/text.h"
#include "support/failure_number.h"
#include "support/property_check.h"

namespace lineweir::test {
namespace {

constexpr int seconds_at(int hour, int minute, int second) {
  return (hour * 60 + minute) * 60 + second;
}

rc::Gen<int> any_time_of_day() { return rc::gen::inRange(0, seconds_per_day); }

platform::DateTime moment_at(int seconds) {
  return {2026, 1, 5, seconds / 3600, seconds / 60 % 60, seconds % 60};
}

TEST_SUITE("base/time text: reading") {
  TEST_CASE("a time of day is read in each of its forms") {
    struct Row {
      std::string_view text;
      int seconds;
    };
    for (const Row& row : {
             Row{"00:00:00", 0},
             Row{"23:59:59", seconds_at(23, 59, 59)},
             Row{"9:05:07", seconds_at(9, 5, 7)},
             Row{"00:00:0012", 12},
             Row{"0009:00005:0000000007", seconds_at(9, 5, 7)},
             Row{"9:5:7", seconds_at(9, 5, 7)},
             Row{"  10:00:00  ", seconds_at(10, 0, 0)},
             Row{"10:00:00 AM", seconds_at(10, 0, 0)},
             Row{"10:00:00 PM", seconds_at(22, 0, 0)},
             Row{"10:00:00 pm", seconds_at(22, 0, 0)},
             Row{"10:00:00 am", seconds_at(10, 0, 0)},
             Row{"12:00:00 AM", 0},
             Row{"12:00:01 AM", 1},
             Row{"12:00:00 PM", seconds_at(12, 0, 0)},
             Row{"11:59:59 PM", seconds_at(23, 59, 59)},
             Row{"1/5/2026 10:00:00 AM", seconds_at(10, 0, 0)},
             Row{"12/31/1999 11:59:59 PM", seconds_at(23, 59, 59)},
             Row{"01/05/2026  22:00:00", seconds_at(22, 0, 0)},
             Row{" 1/5/2026 12:00:00 AM ", 0},
         }) {
      CAPTURE(row.text);
      CHECK(time_of_day(row.text) == row.seconds);
      CHECK(required_time_of_day(row.text) == row.seconds);
    }
  }

  TEST_CASE("what is no time is nothing, and failure 13 where one is required") {
    for (const auto* text : {"",
                             "   ",
                             "x",
                             "10",
                             "10:00",
                             "10:00:",
                             ":00:00",
                             "10::00",
                             "10:60:00",
                             "10:00:60",
                             "24:00:00",
                             "10:00:00:00",
                             "10:00:00 XM",
                             "13:00:00 PM",
                             "-1:00:00",
                             "10:00:-1",
                             "10 :00:00",
                             "10:00:00x",
                             "1/5/2026",
                             "1/5/ 10:00:00",
                             "1/5 10:0:0",
                             "1//5 1:0:0",
                             "99999:00:00",
                             "10:00:99999999999999999999"}) {
      CAPTURE(text);
      CHECK(time_of_day(text) == std::nullopt);
      CHECK(failure_number_of([&] { required_time_of_day(text); }) == 13);
    }
  }

  TEST_CASE("any text gives a time of the day or nothing") {
    check_property([](const std::string& text) {
      const auto time = time_of_day(text);
      RC_ASSERT(!time || (*time >= 0 && *time < seconds_per_day));
    });
    const auto near_time =
        rc::gen::container<std::string>(rc::gen::elementOf(std::string("0123456789:/ APMapm")));
    check_property([&] {
      const std::string text = *near_time;
      const auto time = time_of_day(text);
      RC_ASSERT(!time || (*time >= 0 && *time < seconds_per_day));
    });
  }
}

TEST_SUITE("base/time text: writing") {
  TEST_CASE("a difference is its absolute value, wrapped at 24 hours") {
    CHECK(hms_text(0) == "00:00:00");
    CHECK(hms_text(seconds_at(1, 2, 3)) == "01:02:03");
    CHECK(hms_text(-5) == "00:00:05");
    CHECK(hms_text(seconds_at(24, 0, 1)) == "00:00:01");
    CHECK(hms_text(-seconds_at(25, 0, 0)) == "01:00:00");
    CHECK(short_hms_text(seconds_at(1, 2, 3)) == "1:02:03");
    CHECK(short_hms_text(0) == "0:00:00");
    CHECK(short_hms_text(-seconds_at(23, 59, 59)) == "23:59:59");
  }

  TEST_CASE("clock times have two digits and a half of the day") {
    CHECK(clock_text(0) == "12:00:00 AM");
    CHECK(clock_text(seconds_at(9, 5, 7)) == "09:05:07 AM");
    CHECK(clock_text(seconds_at(12, 0, 0)) == "12:00:00 PM");
    CHECK(clock_text(seconds_at(23, 59, 59)) == "11:59:59 PM");
  }

  TEST_CASE("dates and moments are written as in the United States") {
    CHECK(date_text({2026, 1, 5, 10, 0, 0}) == "1/5/2026");
    CHECK(date_text({1999, 12, 31, 0, 0, 0}) == "12/31/1999");
    CHECK(minute_text({2026, 11, 15, 0, 4, 9}) == "11/15/2026 12:04 AM");
    CHECK(minute_text({2026, 1, 5, 13, 30, 59}) == "1/5/2026 1:30 PM");
    CHECK(date_time_text({2026, 1, 5, 10, 0, 0}) == "1/5/2026 10:00:00 AM");
    CHECK(date_time_text({2026, 11, 15, 0, 4, 9}) == "11/15/2026 12:04:09 AM");
    CHECK(date_time_text({2026, 1, 5, 12, 0, 0}) == "1/5/2026 12:00:00 PM");
    CHECK(date_time_text({2026, 1, 5, 13, 30, 59}) == "1/5/2026 1:30:59 PM");
  }

  TEST_CASE("each text of a time reads back as that time") {
    check_property([] {
      const int seconds = *any_time_of_day();
      RC_ASSERT(time_of_day(hms_text(seconds)) == seconds);
      RC_ASSERT(time_of_day(short_hms_text(seconds)) == seconds);
      RC_ASSERT(time_of_day(clock_text(seconds)) == seconds);
      RC_ASSERT(time_of_day(date_time_text(moment_at(seconds))) == seconds);
      RC_ASSERT(seconds_of_day(moment_at(seconds)) == seconds);
    });
  }

  TEST_CASE("zeros in front of a number and blanks around a time don't count") {
    check_property([] {
      const int seconds = *any_time_of_day();
      const auto zeros = *rc::gen::inRange<std::size_t>(0, 40);
      const auto blanks = *rc::gen::inRange<std::size_t>(0, 5);
      const std::string text = std::string(blanks, ' ') + std::string(zeros, '0') +
                               short_hms_text(seconds) + std::string(blanks, ' ');
      RC_ASSERT(time_of_day(text) == seconds);
    });
  }
}

TEST_SUITE("base/time text: time since") {
  TEST_CASE("it is the difference of two times of day") {
    CHECK(time_since("1/5/2026 10:00:00 AM", {2026, 1, 5, 10, 2, 3}) == "00:02:03");
    CHECK(time_since("10:00:00 AM", {2026, 1, 5, 22, 0, 0}) == "12:00:00");
  }

  TEST_CASE("days don't count, nor does midnight") {
    CHECK(time_since("1/1/2020 10:00:00 AM", {2026, 1, 5, 10, 0, 1}) == "00:00:01");
    CHECK(time_since("1/5/2026 11:59:50 PM", {2026, 1, 6, 0, 0, 10}) == "23:59:40");
    CHECK(time_since("1/5/2026 12:00:00 AM", {2026, 1, 5, 0, 0, 0}) == "00:00:00");
  }

  TEST_CASE("a text that is no time is failure 13") {
    CHECK(failure_number_of([] { time_since("", {2026, 1, 5, 10, 0, 0}); }) == 13);
  }
}

TEST_SUITE("dates") {
  TEST_CASE("the date in front of a time, or alone") {
    CHECK(date_of("1/5/2026") == platform::DateTime{2026, 1, 5});
    CHECK(date_of(" 12/31/1999 11:59:59 PM") == platform::DateTime{1999, 12, 31});
    CHECK(date_of("2/29/2024") == platform::DateTime{2024, 2, 29});
    CHECK(date_of("1/5/29") == platform::DateTime{2029, 1, 5});
    CHECK(date_of("1/5/30") == platform::DateTime{1930, 1, 5});
  }

  TEST_CASE("what is no day of the calendar is none") {
    for (const char* text : {"", "1/5", "1/5/", "13/1/2026", "0/1/2026", "2/29/2026", "1/32/2026",
                             "1/5/2026x", "1-5-2026", "10:00:00 AM", "99999/1/2026"}) {
      CAPTURE(text);
      CHECK_FALSE(date_of(text));
    }
  }

  TEST_CASE("seconds between two moments count days and leap days") {
    const platform::DateTime morning{2026, 1, 5, 10, 0, 0};
    CHECK(seconds_between(morning, {2026, 1, 5, 10, 2, 0}) == 120);
    CHECK(seconds_between(morning, {2026, 1, 5, 9, 59, 59}) == -1);
    CHECK(seconds_between({2025, 12, 31, 23, 59, 59}, {2026, 1, 1, 0, 0, 1}) == 2);
    CHECK(seconds_between({2024, 2, 28}, {2024, 3, 1}) == 2LL * seconds_per_day);
    CHECK(at_time_of_day({2026, 1, 5}, 86399) == platform::DateTime{2026, 1, 5, 23, 59, 59});
  }
}

}  // namespace
}  // namespace lineweir::test
