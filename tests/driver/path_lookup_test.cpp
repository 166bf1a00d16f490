#include "driver/path.h"

#include <doctest/doctest.h>

namespace lineweir::driver {
namespace {

std::string shape(const char* path) { return path_shape(*parse_path(path)); }

TEST_CASE("A path is names with indices, parted by dots") {
  const auto parts = parse_path("Form2.Grid1.Cell(3,1)");
  REQUIRE(parts);
  REQUIRE(parts->size() == 3);
  CHECK((*parts)[0].name == "Form2");
  CHECK((*parts)[2].name == "Cell");
  CHECK((*parts)[2].indices == std::vector<int>{3, 1});
}

TEST_CASE("A path's shape is its names with parentheses for indices") {
  CHECK(shape("LineTable.CallerData(4).City") == "linetable.callerdata().city");
  CHECK(shape("TheNextCall") == "thenextcall");
  CHECK(path_indices(*parse_path("A(1).B(2,3)")) == std::vector<int>{1, 2, 3});
}

TEST_CASE("What is no path is nothing") {
  for (const char* text : {"",       ".",     "A.",       ".A",    "A..B",
                           "A()",    "A(",    "A)",       "A(1",   "A(x)",
                           "A(1,)",  "A(,1)", "A(1,2,3)", "A(1)B", "A(99999999999)",
                           "A(1.5)", "A-B",   "A B",      "(1)",   "A( 1)",
                           "A(+1)"}) {
    CHECK_FALSE(parse_path(text));
  }
}

TEST_CASE("A negative index is read, to be refused by what it leads to") {
  CHECK((*parse_path("A(-1)"))[0].indices == std::vector<int>{-1});
}

}  // namespace
}  // namespace lineweir::driver
