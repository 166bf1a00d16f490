#include "lines/status_letters.h"

#include <doctest/doctest.h>

#include <string>

namespace lineweir::test {
namespace {

struct Row {
  char letter;
  std::string_view status_text;
  RowColor row;
  bool may_be_next;
  int icon1;
  int icon2;
};

constexpr std::array expected_looks = {
    Row{' ', "", RowColor::White, false, 0, 0},
    Row{'F', "", RowColor::White, false, 0, 0},
    Row{'R', "", RowColor::White, false, 3, 3},
    Row{'S', "Ready", RowColor::White, true, 3, 3},
    Row{'H', "Held", RowColor::White, true, 2, 2},
    Row{'P', "", RowColor::White, true, 2, 2},
    Row{'O', "", RowColor::White, true, 2, 2},
    Row{'E', "", RowColor::White, true, 2, 2},
    Row{'N', "On Air", RowColor::Red, false, 1, 0},
    Row{'C', "On Air", RowColor::Red, false, 0, 1},
    Row{'L', "Locked", RowColor::Red, false, 1, 0},
    Row{'K', "Locked", RowColor::Red, false, 0, 1},
    Row{'Y', "Locked", RowColor::White, true, 2, 2},
    Row{'B', "Set Busy", RowColor::White, false, 4, 4},
};

TEST_SUITE("core/status letters") {
  TEST_CASE("each letter has its text, strip and icons") {
    for (const Row& expected : expected_looks) {
      CAPTURE(expected.letter);
      const LetterLook* look = look_of(expected.letter);
      REQUIRE(look != nullptr);
      CHECK(look->status_text == expected.status_text);
      CHECK(look->row == expected.row);
      CHECK(look->may_be_next == expected.may_be_next);
      CHECK(look->icon1 == expected.icon1);
      CHECK(look->icon2 == expected.icon2);
    }
  }

  TEST_CASE("the set is closed") {
    std::string letters;
    for (const Row& row : expected_looks) letters += row.letter;
    for (int code = 0; code < 256; ++code) {
      const char letter = static_cast<char>(code);
      CHECK((look_of(letter) != nullptr) == (letters.find(letter) != std::string::npos));
    }
  }

  TEST_CASE("from the letter alone, Y and all letters without a text of their own are empty") {
    for (int code = 0; code < 256; ++code) {
      const char letter = static_cast<char>(code);
      std::string_view expected;
      if (letter == 'N' || letter == 'C') expected = "On Air";
      if (letter == 'S') expected = "Ready";
      if (letter == 'H') expected = "Held";
      if (letter == 'B') expected = "Set Busy";
      if (letter == 'L' || letter == 'K') expected = "Locked";
      CHECK(status_text_of(letter) == expected);
    }
  }
}

}  // namespace
}  // namespace lineweir::test
