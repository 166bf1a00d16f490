#include "lines/cadence.h"

#include <doctest/doctest.h>

#include <string>

#include "base/text.h"
#include "lines/equipment_kinds.h"
#include "support/all_letters.h"

namespace lineweir::test {
namespace {

// The letters with this byte, in the order of their codes.
std::string letters_with(int byte) {
  std::string letters;
  for (int code = 0; code < 256; ++code) {
    const char letter = static_cast<char>(code);
    if (code_of(cadence_byte(letter)) == byte) letters += letter;
  }
  return letters;
}

std::string pair(int first, int second) {
  return {static_cast<char>(first), static_cast<char>(second)};
}

TEST_SUITE("lines/cadence") {
  TEST_CASE("a lamp tells taken, on air, held, ready and ringing apart") {
    CHECK(letters_with(0x08) == "CEOP");
    CHECK(letters_with(0x0C) == "N");
    CHECK(letters_with(0x18) == "H");
    CHECK(letters_with(0x58) == "S");
    CHECK(letters_with(0x10) == "R");
  }

  TEST_CASE("all other lamps are dark, those of letters that nobody knows too") {
    CHECK(letters_with(0).size() == 256 - 8);
  }

  TEST_CASE("where a line has a pair of lamps, the air shows on the lamp of its hybrid") {
    CHECK(cadence_pair('N', false) == pair(12, 8));
    CHECK(cadence_pair('C', false) == pair(8, 12));
  }

  TEST_CASE("both lamps of every other line show its byte") {
    const std::string letters = all_letters();
    CHECK(letters.size() >= 16);
    for (const char letter : letters) {
      if (is_on_air(letter)) continue;
      CAPTURE(letter);
      const std::string both(2, cadence_byte(letter));
      CHECK(cadence_pair(letter, false) == both);
      CHECK(cadence_pair(letter, true) == both);
    }
  }

  TEST_CASE("only the screener's handset of kind 3 shows C without the air") {
    for (const int kind : {1, 2, 3, 4}) {
      for (const bool handset_1 : {false, true}) {
        CAPTURE(kind);
        CAPTURE(handset_1);
        const bool on_conference = handset_is_on_conference(kind, handset_1);
        CHECK(on_conference == (kind == 3 && handset_1));
        CHECK(cadence_pair('C', on_conference) == (on_conference ? pair(8, 8) : pair(8, 12)));
        CHECK(cadence_pair('N', on_conference) == pair(12, 8));
      }
    }
  }
}

}  // namespace
}  // namespace lineweir::test
