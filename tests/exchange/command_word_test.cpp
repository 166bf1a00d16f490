#include "exchange/command_word.h"

#include <doctest/doctest.h>

#include <string>

using namespace lineweir::exchange;

namespace {

CommandWord word(Action action, int number = 0) { return {action, number}; }

}  // namespace

TEST_CASE("a line word names its line") {
  CHECK(parse_word("F05") == word(Action::DropLine, 5));
  CHECK(parse_word("H00") == word(Action::HoldLine, 0));
  CHECK(parse_word("S19") == word(Action::ScreenLine, 19));
  CHECK(parse_word("N05") == word(Action::AirOnMain, 5));
  CHECK(parse_word("C12") == word(Action::AirOnConference, 12));
  CHECK(parse_word("L03") == word(Action::ToggleLock, 3));
  CHECK(parse_word("P14") == word(Action::ToPosition1, 14));
  CHECK(parse_word("O16") == word(Action::ToPosition2, 16));
}

TEST_CASE("15 releases a handset position and is never a line") {
  CHECK(parse_word("P15") == word(Action::ReleasePosition1, 15));
  CHECK(parse_word("O15") == word(Action::ReleasePosition2, 15));
  CHECK(parse_word("N15") == word(Action::AirOnMain, 15));
}

TEST_CASE("every tone word is a tone") {
  for (const char letter : {'P', 'O'}) {
    for (const char* digits :
         {"20", "21", "22", "23", "24", "25", "26", "27", "28", "29", "31", "32"}) {
      const auto tone = parse_word(letter + std::string(digits));
      REQUIRE(tone);
      CHECK(tone->action == Action::Tone);
    }
    CHECK_FALSE(parse_word(letter + std::string("30")));
    CHECK_FALSE(parse_word(letter + std::string("33")));
  }
  for (int digit = 0; digit <= 12; ++digit) {
    const auto tone = parse_word((digit < 10 ? "T0" : "T") + std::to_string(digit));
    REQUIRE(tone);
    CHECK(tone->action == Action::Tone);
  }
  CHECK_FALSE(parse_word("T13"));
  CHECK(parse_word("Z11") == word(Action::Tone, 11));
  CHECK_FALSE(parse_word("Z12"));
}

TEST_CASE("words that stand alone, and queries") {
  CHECK(parse_word("M") == word(Action::MonitorOn));
  CHECK(parse_word("X") == word(Action::Noted));
  CHECK(parse_word("R") == word(Action::Noted));
  CHECK(parse_word("Q00") == word(Action::QueryLine, 0));
  CHECK(parse_word("Q09") == word(Action::QueryLine, 9));
  CHECK(parse_word("Q010") == word(Action::QueryLine, 10));
  CHECK(parse_word("Q019") == word(Action::QueryLine, 19));
}

TEST_CASE("anything else is no word") {
  for (const char* text : {"", "N", "N5", "N055", "n05", "N20", "Q", "Q0", "Q5", "Q005", "Q020",
                           "Q0100", "MM", "X05", "N 5", "N+5", "E05", "05"}) {
    CAPTURE(text);
    CHECK_FALSE(parse_word(text));
  }
}
