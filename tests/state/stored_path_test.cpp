#include "state/stored_path.h"

#include <doctest/doctest.h>

#include "support/failure_number.h"

namespace lineweir::test {
namespace {

TEST_SUITE("state/stored path") {
  TEST_CASE("a path has its field's width in the settings") {
    CHECK(longest_plan_path == 100);
    CHECK(longest_log_path == 100);
  }

  TEST_CASE("a longer path is refused with one sentence") {
    require_storable(std::string(100, 'p'), longest_log_path);
    require_storable("", longest_log_path);
    CHECK(failure_number_of([] { require_storable(std::string(101, 'p'), longest_log_path); }) ==
          5);
    try {
      require_storable(std::string(31, 'p'), 30);
    } catch (const Failure& failure) {
      CHECK(failure.what() ==
            std::string("The path has 31 characters and only 30 can be stored; choose a shorter "
                        "one."));
    }
  }
}

}  // namespace
}  // namespace lineweir::test
