#include "serverlink/command_frame.h"

#include <doctest/doctest.h>

#include <string>

#include "base/failure.h"
#include "support/bytes.h"
#include "support/failure_number.h"
#include "support/property_check.h"
#include "support/server_packet.h"

namespace lineweir::test {
namespace {

constexpr int frame_group = 3;
constexpr int frame_console = 2;
constexpr int unset = 0;

// A console of group 3 with 20 lines; line k has letter k of this text.
struct FrameDesk {
  LineTable lines;
  DialState dial;
  bool screener = false;

  FrameDesk() {
    lines.LineCount = 20;
    lines.resize(20);
    const std::string letters = "NCPOHSRELKYB ";
    for (std::size_t line = 0; line < letters.size(); ++line) {
      lines.StatusLetter(static_cast<int>(line)) = letters[line];
    }
  }

  std::optional<std::string> frame(std::string_view word, int bank) const {
    const auto packet =
        command_frame(word, bank, {frame_group, frame_console, screener, lines, dial});
    if (!packet) return std::nullopt;
    return frame_of(*packet);
  }
};

// The frame of CmdLineCommand with a buffer of one letter.
std::string line_frame(int line, int alt_info, int bank, char letter) {
  return bytes(
      {4, 4, 4, line, frame_group, alt_info, frame_console, bank, 0, 1, letter, 255, 5, 5});
}

std::string dial_digit(int line, int bank, char digit) {
  return bytes(
      {4, 4, 14, line, frame_group, frame_console, frame_console, bank, 0, 1, digit, 255, 5, 5});
}

TEST_SUITE("serverlink/command_frame") {
  TEST_CASE("N and C are both N to the server, told apart by AltInfo") {
    const FrameDesk desk;
    CHECK(desk.frame("N05", 0) == line_frame(5, 0, 0, 'N'));
    CHECK(desk.frame("C05", 1) == line_frame(5, 1, 1, 'N'));
    CHECK(desk.frame("N19", 0) == line_frame(19, 0, 0, 'N'));
  }

  TEST_CASE("F, H, S and V tell where the caller on the line is") {
    const FrameDesk desk;
    for (const char letter : {'F', 'H', 'S', 'V'}) {
      CAPTURE(letter);
      const auto word = [&](const char* number) { return letter + std::string(number); };
      CHECK(desk.frame(word("00"), 1) == line_frame(0, 65, 1, letter));
      CHECK(desk.frame(word("01"), 1) == line_frame(1, 66, 1, letter));
      CHECK(desk.frame(word("02"), 1) == line_frame(2, 0, 1, letter));
      CHECK(desk.frame(word("03"), 1) == line_frame(3, 1, 1, letter));
      for (int line = 4; line < 20; ++line) {
        CAPTURE(line);
        const std::string number = (line < 10 ? "0" : "") + std::to_string(line);
        CHECK(desk.frame(word(number.c_str()), 255) == line_frame(line, 255, 255, letter));
      }
    }
  }

  TEST_CASE("F05 of a line in C gives 66, of a line in H 255") {
    FrameDesk desk;
    desk.lines.StatusLetter(5) = 'C';
    CHECK(desk.frame("F05", 0) == line_frame(5, 66, 0, 'F'));
    desk.lines.StatusLetter(5) = 'H';
    CHECK(desk.frame("F05", 0) == line_frame(5, 255, 0, 'F'));
  }

  TEST_CASE("a line that the table doesn't have is sent as it is, and the table isn't read") {
    FrameDesk desk;
    desk.lines.LineCount = 10;
    desk.lines.resize(10);
    CHECK(desk.frame("F10", 0) == line_frame(10, 255, 0, 'F'));
    CHECK(desk.frame("H99", 0) == line_frame(99, 255, 0, 'H'));
  }

  TEST_CASE("a word without a line names no line") {
    const FrameDesk desk;
    CHECK(desk.frame("X", 255) == line_frame(255, 255, 0, 'X'));
    CHECK(desk.frame("R", 255) == line_frame(255, 255, 0, 'R'));
    CHECK(desk.frame("F", 0) == line_frame(255, 255, 0, 'F'));
    CHECK(desk.frame("N5", 0) == line_frame(255, 0, 0, 'N'));
  }

  TEST_CASE("L and T words carry no bank") {
    const FrameDesk desk;
    CHECK(desk.frame("L00", 1) == line_frame(0, 255, unset, 'L'));
    for (int tone = 0; tone <= 12; ++tone) {
      CAPTURE(tone);
      const std::string word = (tone < 10 ? "T0" : "T") + std::to_string(tone);
      CHECK(desk.frame(word, 1) == line_frame(tone, 255, unset, 'T'));
    }
  }

  TEST_CASE("both handset positions are P, told apart by AltInfo") {
    const FrameDesk desk;
    for (const int number : {0, 3, 15, 19, 20, 29, 31, 32}) {
      CAPTURE(number);
      const std::string digits = (number < 10 ? "0" : "") + std::to_string(number);
      CHECK(desk.frame("P" + digits, 1) == line_frame(number, 0, 1, 'P'));
      CHECK(desk.frame("O" + digits, 255) == line_frame(number, 1, 255, 'P'));
    }
  }

  TEST_CASE("with equipment of kind 4 a handset word names the console and carries no bank") {
    FrameDesk desk;
    desk.lines.ThePhoneFlag = 4;
    for (const bool screener : {false, true}) {
      desk.screener = screener;
      CHECK(desk.frame("P03", 1) == line_frame(3, frame_console, unset, 'P'));
      CHECK(desk.frame("O15", 1) == line_frame(15, frame_console, unset, 'P'));
    }
  }

  TEST_CASE(
      "a screener with equipment of kind 4 names its console and the bank in every other word") {
    FrameDesk desk;
    desk.screener = true;
    for (const int kind : {1, 2, 3}) {
      desk.lines.ThePhoneFlag = kind;
      CHECK(desk.frame("F00", 1) == line_frame(0, 65, 1, 'F'));
      CHECK(desk.frame("L00", 1) == line_frame(0, 255, unset, 'L'));
    }
    desk.lines.ThePhoneFlag = 4;
    CHECK(desk.frame("F00", 1) == line_frame(0, frame_console, 1, 'F'));
    CHECK(desk.frame("N00", 0) == line_frame(0, frame_console, 0, 'N'));
    CHECK(desk.frame("C00", 1) == line_frame(0, frame_console, 1, 'N'));
    CHECK(desk.frame("L00", 1) == line_frame(0, frame_console, 1, 'L'));
    CHECK(desk.frame("X", 255) == line_frame(255, frame_console, 255, 'X'));
    desk.screener = false;
    CHECK(desk.frame("F00", 1) == line_frame(0, 65, 1, 'F'));
  }

  TEST_CASE("a digit goes to the line that was seized, or else to the one dialled on") {
    FrameDesk desk;
    desk.dial = {4, 7};
    CHECK(desk.frame("Z05", 1) == dial_digit(7, 1, '5'));
    desk.dial = {4, no_line};
    CHECK(desk.frame("Z05", 1) == dial_digit(4, 1, '5'));
    desk.dial = {no_line, 0};
    CHECK(desk.frame("Z05", 0) == dial_digit(0, 0, '5'));
  }

  TEST_CASE("a digit without a line isn't sent at all") {
    const FrameDesk desk;
    CHECK_FALSE(desk.frame("Z05", 0));
  }

  TEST_CASE("the digits, 10 for the star and 11 for the hash") {
    FrameDesk desk;
    desk.dial.DialLine = 1;
    const std::string digits = "0123456789*#";
    for (int n = 0; n < 12; ++n) {
      CAPTURE(n);
      const std::string word = (n < 10 ? "Z0" : "Z") + std::to_string(n);
      CHECK(desk.frame(word, 255) == dial_digit(1, 255, digits[static_cast<std::size_t>(n)]));
    }
  }

  TEST_CASE("another digit leaves the buffer empty and its length one") {
    FrameDesk desk;
    desk.dial.DialLine = 1;
    CHECK(desk.frame("Z12", 0) ==
          bytes({4, 4, 14, 1, frame_group, frame_console, frame_console, 0, 0, 1, 5, 5}));
  }

  TEST_CASE("the equipment's own words are passed on by their letter") {
    const FrameDesk desk;
    CHECK(desk.frame("U07", 255) == line_frame(7, 255, unset, 'U'));
    CHECK(desk.frame("U1234", 255) == line_frame(255, 255, unset, 'U'));
  }

  TEST_CASE("blanks around a word don't count") {
    const FrameDesk desk;
    CHECK(desk.frame(" N05 ", 0) == line_frame(5, 0, 0, 'N'));
    CHECK(desk.frame("X  ", 0) == line_frame(255, 255, unset, 'X'));
  }

  TEST_CASE("an empty word has an empty buffer") {
    const FrameDesk desk;
    CHECK(desk.frame("", 0) ==
          bytes({4, 4, 4, 255, frame_group, 255, frame_console, 0, 0, 1, 5, 5}));
  }

  TEST_CASE("a number that fits no byte is a failure") {
    const FrameDesk desk;
    CHECK(failure_number_of([&] { desk.frame("N05", 256); }) == failure_number::invalid_argument);
    CHECK(failure_number_of([&] { desk.frame("F-1", 0); }) == failure_number::invalid_argument);
  }

  TEST_CASE("any word gives a frame of its group, nothing, or a failure of number 5") {
    check_property([](const std::string& word, int bank, bool screener) {
      FrameDesk desk;
      desk.screener = screener;
      desk.lines.ThePhoneFlag = *rc::gen::inRange(1, 5);
      desk.dial.DialLine = *rc::gen::inRange(-1, 20);
      std::optional<std::string> frame;
      const int failure = failure_number_of([&] { frame = desk.frame(word, bank); });
      RC_ASSERT(failure == no_failure || failure == failure_number::invalid_argument);
      if (frame) RC_ASSERT((*frame)[4] == char{frame_group});
    });
  }
}

}  // namespace
}  // namespace lineweir::test
