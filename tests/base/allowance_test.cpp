#include "base/allowance.h"

#include <doctest/doctest.h>

namespace lineweir {
namespace {

using namespace std::chrono_literals;

TEST_SUITE("base/allowance") {
  TEST_CASE("so much may be taken at once, and then so much a second") {
    Allowance allowance(3, 2, 0ms);
    CHECK(allowance.take(1, 0ms));
    CHECK(allowance.take(2, 0ms));
    CHECK_FALSE(allowance.take(1, 0ms));
    CHECK_FALSE(allowance.take(1, 499ms));
    CHECK(allowance.take(1, 500ms));
    CHECK_FALSE(allowance.take(0.5, 500ms));
  }

  TEST_CASE("what isn't there isn't taken in part") {
    Allowance allowance(3, 2, 0ms);
    CHECK_FALSE(allowance.take(4, 0ms));
    CHECK(allowance.take(3, 0ms));
  }

  TEST_CASE("a long rest brings no more than what may be taken at once") {
    Allowance allowance(3, 2, 0ms);
    CHECK(allowance.take(3, 0ms));
    CHECK_FALSE(allowance.is_whole(1499ms));
    CHECK(allowance.is_whole(1500ms));
    CHECK_FALSE(allowance.take(4, 24h));
  }

  TEST_CASE("what is used up comes back like what was taken") {
    Allowance allowance(3, 2, 0ms);
    allowance.use_up();
    CHECK_FALSE(allowance.take(1, 400ms));
    CHECK(allowance.take(1, 500ms));
  }
}

}  // namespace
}  // namespace lineweir
