#include "clocks/warning_threshold.h"

#include <doctest/doctest.h>

#include "base/time_text.h"

namespace lineweir::test {
namespace {

TEST_SUITE("clocks/warning threshold") {
  TEST_CASE("one second more than the warning") {
    CHECK(warning_threshold(30) == "00:00:31");
    CHECK(warning_threshold(0) == "00:00:1");
    CHECK(warning_threshold(9) == "00:00:10");
    CHECK(warning_threshold(58) == "00:00:59");
  }

  TEST_CASE("from 59 seconds on minutes are made") {
    CHECK(warning_threshold(59) == "00:01:00");
    CHECK(warning_threshold(60) == "00:01:01");
    CHECK(warning_threshold(599) == "00:10:00");
    CHECK(warning_threshold(3598) == "00:59:59");
  }

  TEST_CASE("every warning from -1 to an hour less two seconds stands for one second more") {
    for (int warning = -1; warning <= 3598; ++warning) {
      CAPTURE(warning);
      CHECK(time_of_day(warning_threshold(warning)) == warning + 1);
    }
  }

  TEST_CASE("a warning comes from -1 second to an hour less two seconds before the end") {
    for (const int warning : {-1, 0, 59, 3598}) CHECK(is_warning_time(warning));
    for (const int warning : {-2, 3599}) CHECK_FALSE(is_warning_time(warning));
  }

  TEST_CASE("other warnings give no time") {
    for (const int warning : {-2, -32768, 3599, 3600, 32767}) {
      CAPTURE(warning);
      CHECK_FALSE(time_of_day(warning_threshold(warning)));
    }
  }
}

}  // namespace
}  // namespace lineweir::test
