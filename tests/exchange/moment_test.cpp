#include "exchange/moment.h"

#include <doctest/doctest.h>

using namespace lineweir::exchange;

TEST_CASE("seconds are read to the millisecond") {
  CHECK(parse_seconds("0") == Moment(0));
  CHECK(parse_seconds("12") == Moment(12'000));
  CHECK(parse_seconds("2.5") == Moment(2'500));
  CHECK(parse_seconds("0.125") == Moment(125));
  CHECK(parse_seconds("999999999.999") == Moment(999'999'999'999));
}

TEST_CASE("what isn't plainly a time is refused") {
  for (const char* text : {"", ".", "1.", ".5", "-1", "+1", " 1", "1 ", "1e3", "nan", "inf", "1,5",
                           "1.2345", "1.2.3", "1234567890"}) {
    CAPTURE(text);
    CHECK_FALSE(parse_seconds(text));
  }
}

TEST_CASE("a moment is written with three decimals") {
  CHECK(format_seconds(Moment(0)) == "0.000");
  CHECK(format_seconds(Moment(7)) == "0.007");
  CHECK(format_seconds(Moment(12'500)) == "12.500");
  CHECK(format_seconds(Moment(100'000'050)) == "100000.050");
}
