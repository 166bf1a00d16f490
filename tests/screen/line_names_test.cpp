#include "screen/line_names.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

TEST_SUITE("screen/line_names") {
  TEST_CASE("a text of less than ten characters comes back unchanged") {
    CHECK(FindLongestName("") == "");
    CHECK(FindLongestName(" Desk 1 ") == " Desk 1 ");
    CHECK(FindLongestName("123456789") == "123456789");
  }

  TEST_CASE("of cells of ten characters the longest name is found, blanks aside") {
    CHECK(FindLongestName("Desk      ") == "Desk");
    CHECK(FindLongestName("1         2         ") == "1");
    CHECK(FindLongestName("A         Studio    Desk 1    ") == "Studio");
    CHECK(FindLongestName("  Desk 12 Guest     ") == "Desk 12");
    CHECK(FindLongestName("1234567890123456789 ") == "1234567890");
    CHECK(FindLongestName("          ") == "");
  }

  TEST_CASE("a last cell that is cut short counts too") {
    CHECK(FindLongestName("Desk      Hotline") == "Hotline");
    CHECK(FindLongestName("Hotline 1 Desk") == "Hotline 1");
  }
}

}  // namespace
}  // namespace lineweir::test
