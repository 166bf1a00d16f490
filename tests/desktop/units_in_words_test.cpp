#include "desktop/units_in_words.h"

#include <doctest/doctest.h>

namespace lineweir {
namespace {

TEST_SUITE("desktop/units in words") {
  TEST_CASE("a time is told in hours, minutes and seconds, each one or many") {
    CHECK(duration_in_words(0) == "0 seconds");
    CHECK(duration_in_words(1) == "1 second");
    CHECK(duration_in_words(59) == "59 seconds");
    CHECK(duration_in_words(60) == "1 minute");
    CHECK(duration_in_words(120) == "2 minutes");
    CHECK(duration_in_words(3600) == "1 hour");
    CHECK(duration_in_words(7200) == "2 hours");
    CHECK(duration_in_words(3661) == "1 hour 1 minute 1 second");
    CHECK(duration_in_words(7325) == "2 hours 2 minutes 5 seconds");
  }

  TEST_CASE("a length is told in whole millimetres") {
    CHECK(millimetres_of(1440) == "25 mm");
    CHECK(millimetres_of(567) == "10 mm");
  }
}

}  // namespace
}  // namespace lineweir
