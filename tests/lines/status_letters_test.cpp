#include "lines/status_letters.h"

#include <doctest/doctest.h>

#include <set>
#include <string>
#include <string_view>

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

std::string letters_with_text(std::string_view text) {
  return letters_where([&](const LetterLook& look) { return look.status_text == text; });
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

  TEST_CASE("each letter has its text in the row") {
    CHECK(letters_with_text("On Air") == "NC");
    CHECK(letters_with_text("Locked") == "LKY");
    CHECK(letters_with_text("Ready") == "S");
    CHECK(letters_with_text("Held") == "H");
    CHECK(letters_with_text("Set Busy") == "B");
    CHECK(letters_with_text("") == " FRPOE");
  }

  TEST_CASE("from the letter alone comes the text of its look, but none for Y") {
    std::string with_text;
    for (int code = 0; code < 256; ++code) {
      const char letter = static_cast<char>(code);
      const LetterLook* look = look_of(letter);
      const std::string_view text = status_text_of(letter);
      CAPTURE(code);
      if (text.empty()) continue;
      with_text += letter;
      REQUIRE(look != nullptr);
      CHECK(text == look->status_text);
    }
    CHECK(with_text == "BCHKLNS");
  }

  TEST_CASE("who talks, and who is locked") {
    std::string screeners;
    std::string locked;
    for (const StatusLetter& row : status_letters) {
      if (row.talker == Talker::Screener) screeners += row.look.letter;
      if (row.locked) locked += row.look.letter;
    }
    CHECK(screeners == "PO");
    CHECK(locked == "LKY");
  }

  TEST_CASE("each state is said in words of its own, a free line's as an idle one's") {
    std::set<std::string_view> spoken;
    for (const StatusLetter& row : status_letters) {
      CHECK_FALSE(row.spoken.empty());
      spoken.insert(row.spoken);
    }
    CHECK(spoken.size() == status_letters.size() - 1);
    CHECK(status_letter('F')->spoken == status_letter(' ')->spoken);
    CHECK(status_letter('N')->spoken == "on air, main hybrid");
    CHECK(status_letter('K')->spoken == "locked on air, conference hybrid");
  }
}

}  // namespace
}  // namespace lineweir::test
