#include "base/number_reply.h"

#include <doctest/doctest.h>

#include "base/failure.h"
#include "support/failure_number.h"

namespace lineweir::test {
namespace {

TEST_SUITE("base/number reply") {
  TEST_CASE("only a whole answer that is a number is one") {
    CHECK(number_reply("30") == 30.0);
    CHECK(number_reply(" 30 ") == 30.0);
    CHECK(number_reply("-5") == -5.0);
    CHECK(number_reply("+5") == 5.0);
    CHECK(number_reply("12.5") == 12.5);
    CHECK(number_reply(".5") == 0.5);
    for (const char* text : {"", " ", "abc", "30s", "3 0", "-", "+", "+-5", "--5", "nan", "inf"}) {
      CAPTURE(text);
      CHECK_FALSE(number_reply(text));
    }
    CHECK_FALSE(number_reply(std::nullopt));
  }

  TEST_CASE("a number in front is read as far as it goes, without its fraction") {
    CHECK(whole_number_in("12") == 12);
    CHECK(whole_number_in("  12 seconds") == 12);
    CHECK(whole_number_in("12.9") == 12);
    CHECK(whole_number_in("-3") == -3);
    CHECK(whole_number_in("none") == 0);
    CHECK(whole_number_in("") == 0);
    CHECK(whole_number_in("99999999999999999999999") > 59);
  }

  TEST_CASE("whole 16-bit numbers are the nearest, the even one of two") {
    CHECK(whole_16_bits(12.4) == 12);
    CHECK(whole_16_bits(12.5) == 12);
    CHECK(whole_16_bits(13.5) == 14);
    CHECK(whole_16_bits(-32768) == -32768);
    CHECK(whole_16_bits(32767) == 32767);
    CHECK(failure_number_of([] { whole_16_bits(32768); }) == failure_number::overflow);
    CHECK(failure_number_of([] { whole_16_bits(-1e300); }) == failure_number::overflow);
  }
}

}  // namespace
}  // namespace lineweir::test
