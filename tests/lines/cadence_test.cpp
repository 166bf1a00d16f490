#include "lines/cadence.h"
#include "lines/equipment_kinds.h"

#include <doctest/doctest.h>

#include "base/text.h"

namespace lineweir::test {
namespace {

int expected_byte(char letter) {
  switch (letter) {
    case 'P':
    case 'O':
    case 'E':
    case 'C':
      return 8;
    case 'N':
      return 12;
    case 'H':
      return 24;
    case 'S':
      return 88;
    case 'R':
      return 16;
    default:
      return 0;
  }
}

std::string pair(int first, int second) {
  return {static_cast<char>(first), static_cast<char>(second)};
}

TEST_SUITE("lines/cadence") {
  TEST_CASE("each letter has its byte, every other one none") {
    for (int code = 0; code < 256; ++code) {
      const char letter = static_cast<char>(code);
      CAPTURE(code);
      CHECK(code_of(cadence_byte(letter)) == expected_byte(letter));
    }
  }

  TEST_CASE("the two lamps differ only for a line on air") {
    for (int code = 0; code < 256; ++code) {
      const char letter = static_cast<char>(code);
      std::string expected = pair(expected_byte(letter), expected_byte(letter));
      if (letter == 'N') expected = pair(12, 8);
      if (letter == 'C') expected = pair(8, 12);
      for (const int phone_flag : {1, 2, 3, 4}) {
        for (const bool handset_1 : {false, true}) {
          CAPTURE(code);
          CAPTURE(phone_flag);
          CAPTURE(handset_1);
          const bool exception = letter == 'C' && phone_flag == 3 && handset_1;
          CHECK(cadence_pair(letter, handset_is_on_conference(phone_flag, handset_1)) ==
                (exception ? pair(8, 8) : expected));
        }
      }
    }
  }
}

}  // namespace
}  // namespace lineweir::test
