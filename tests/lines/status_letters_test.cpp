#include "lines/status_letters.h"

#include <doctest/doctest.h>

#include <string>

namespace lineweir::test {
namespace {

// The letters of the set for which something holds, in the set's order.
template <class Holds>
std::string letters_where(Holds&& holds) {
  std::string letters;
  for (const StatusLetter& row : status_letters) {
    if (holds(row.look)) letters += row.look.letter;
  }
  return letters;
}

std::string letters_with_icons(int icon1, int icon2) {
  return letters_where(
      [&](const LetterLook& look) { return look.icon1 == icon1 && look.icon2 == icon2; });
}

TEST_SUITE("lines/status letters") {
  TEST_CASE("the set is closed") {
    const std::string letters = letters_where([](const LetterLook&) { return true; });
    CHECK(letters == " FRSHPOENCLKYB");
    for (int code = 0; code < 256; ++code) {
      const char letter = static_cast<char>(code);
      const LetterLook* look = look_of(letter);
      CHECK((look != nullptr) == (letters.find(letter) != std::string::npos));
      if (look != nullptr) CHECK(look->letter == letter);
    }
  }

  TEST_CASE("a strip is red where the host talks, and nowhere else") {
    CHECK(letters_where([](const LetterLook& look) { return look.row == RowColor::Red; }) ==
          "NCLK");
    for (const StatusLetter& row : status_letters) {
      CAPTURE(row.look.letter);
      CHECK((row.look.row == RowColor::Red) == (row.talker == Talker::Host));
    }
  }

  TEST_CASE("the next call is somebody who waits or talks off the air") {
    CHECK(letters_where([](const LetterLook& look) { return look.may_be_next; }) == "SHPOEY");
  }

  TEST_CASE("two icons alike, but on air, where one tells the hybrid") {
    CHECK(letters_with_icons(0, 0) == " F");
    CHECK(letters_with_icons(1, 0) == "NL");
    CHECK(letters_with_icons(0, 1) == "CK");
    CHECK(letters_with_icons(2, 2) == "HPOEY");
    CHECK(letters_with_icons(3, 3) == "RS");
    CHECK(letters_with_icons(4, 4) == "B");
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
      // A report gives Y its text; the others have the same.
      const std::string_view reported = letter == 'Y' ? "Locked" : expected;
      if (look_of(letter) != nullptr) CHECK(look_of(letter)->status_text == reported);
    }
  }
}

}  // namespace
}  // namespace lineweir::test
