#include "base/integer16.h"

#include <doctest/doctest.h>

#include <climits>

#include "support/failure_number.h"

namespace lineweir::test {
namespace {

TEST_SUITE("base/16-bit integer") {
  TEST_CASE("what fits in 16 signed bits goes through") {
    for (const long long value : {-32768LL, -1LL, 0LL, 32767LL}) CHECK(integer16(value) == value);
  }

  TEST_CASE("what doesn't fit is failure 6") {
    for (const long long value : {-32769LL, 32768LL, 65536LL, LLONG_MIN, LLONG_MAX}) {
      CHECK(failure_number_of([&] { integer16(value); }) == 6);
    }
  }
}

}  // namespace
}  // namespace lineweir::test
