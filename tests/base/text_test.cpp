#include "base/text.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

TEST_SUITE("base/text") {
  TEST_CASE("trimming takes blanks off and nothing else") {
    CHECK(trimmed("  a b  ") == "a b");
    CHECK(trimmed_left("  a ") == "a ");
    CHECK(trimmed_right(" a  ") == " a");
    CHECK(trimmed("   ") == "");
    CHECK(trimmed("") == "");
    CHECK(trimmed(" \ta\r\n ") == "\ta\r\n");
    CHECK(trimmed(std::string_view("\0 ", 2)) == std::string_view("\0", 1));
  }

  TEST_CASE("a part is cut at the text's end") {
    CHECK(left_part("abc", 2) == "ab");
    CHECK(left_part("abc", 3) == "abc");
    CHECK(left_part("abc", 9) == "abc");
    CHECK(left_part("", 1) == "");
    CHECK(right_part("abc", 2) == "bc");
    CHECK(right_part("abc", 9) == "abc");
    CHECK(right_part("abc", 0) == "");
  }

  TEST_CASE("a character's code is 0 to 255") {
    CHECK(code_of('A') == 65);
    CHECK(code_of('\xFF') == 255);
    CHECK(code_of('\0') == 0);
  }

  TEST_CASE("zeros fill up to the width, and a longer number stays whole") {
    CHECK(zero_filled(5, 2) == "05");
    CHECK(zero_filled(0, 3) == "000");
    CHECK(zero_filled(123, 2) == "123");
  }

  TEST_CASE("the leading number is read as far as it goes") {
    CHECK(leading_number("12x") == 12);
    CHECK(leading_number("  7 8") == 7);
    CHECK(leading_number("-3") == -3);
    CHECK(leading_number("+4") == 4);
    CHECK(leading_number("007") == 7);
    for (const auto* none : {"", "x", "x1", "-", "+", "+-5", "-+5", "--5", "\t5"}) {
      CAPTURE(none);
      CHECK(leading_number(none) == 0);
    }
  }
}

}  // namespace
}  // namespace lineweir::test
