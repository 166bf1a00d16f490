#include <doctest/doctest.h>

#include "lines/cadence.h"
#include "support/failure_number.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

const std::string dark(2, '\0');

struct CadenceConsole : ScriptedConsole {
  explicit CadenceConsole(int line_count) {
    console.layout.set_line_count(line_count);
    console.Lineweir.Line20Mode.checked = line_count > 10;
    for (int line = 0; line < line_count; ++line) {
      console.Lineweir.OnHybrid1(line).visible = true;
    }
  }
  std::string cadence(int line) const { return console.rows.GetCadence(line); }
  void set_letter(int line, char letter) { console.lines.StatusLetter(line) = letter; }
  void hide(int line) { console.Lineweir.OnHybrid1(line).visible = false; }
};

TEST_SUITE("screen/cadence of a line: up to 10 lines") {
  TEST_CASE("a line has both lamps to itself") {
    CadenceConsole test(10);
    for (const char letter : std::string("POENCHSRFBLKY ")) {
      CAPTURE(letter);
      for (int line = 0; line < 10; ++line) {
        test.set_letter(line, letter);
        CHECK(test.cadence(line) == cadence_pair(letter, false));
      }
    }
  }

  TEST_CASE("a hidden row is dark") {
    CadenceConsole test(10);
    test.set_letter(4, 'N');
    test.hide(4);
    CHECK(test.cadence(4) == dark);
  }

  TEST_CASE("the handset position shows on equipment of kind 3 alone") {
    CadenceConsole test(10);
    test.set_letter(0, 'C');
    for (const int flag : {1, 2, 3, 4}) {
      for (const bool checked : {false, true}) {
        test.console.lines.ThePhoneFlag = flag;
        test.console.Lineweir.MitelPhone1.checked = checked;
        const bool handset = flag == 3 && checked;
        CHECK(test.cadence(0) == (handset ? "\x08\x08" : "\x08\x0C"));
      }
    }
  }

  TEST_CASE("a line that has no row is failure 340") {
    const CadenceConsole test(10);
    CHECK(failure_number_of([&] { test.cadence(10); }) == 340);
    CHECK(failure_number_of([&] { test.cadence(-1); }) == 340);
  }
}

TEST_SUITE("screen/cadence of a line: 20 lines") {
  TEST_CASE("a line and the one ten above it share a position, the lower first") {
    CadenceConsole test(20);
    for (const char letter : std::string("POENCHSRFBLKY ")) {
      CAPTURE(letter);
      for (int lower = 0; lower < 9; ++lower) {
        test.set_letter(lower, letter);
        test.set_letter(lower + 10, 'R');
        const std::string expected = {cadence_byte(letter), '\x10'};
        CHECK(test.cadence(lower) == expected);
        CHECK(test.cadence(lower + 10) == expected);
      }
    }
  }

  TEST_CASE("the last line is always dark") {
    CadenceConsole test(20);
    test.set_letter(9, 'N');
    test.set_letter(19, 'N');
    CHECK(test.cadence(9) == std::string("\x0C\0", 2));
    CHECK(test.cadence(19) == std::string("\x0C\0", 2));
  }

  TEST_CASE("a hidden row is dark by itself") {
    CadenceConsole test(20);
    test.set_letter(3, 'S');
    test.set_letter(13, 'H');
    test.hide(3);
    CHECK(test.cadence(13) == std::string("\0\x18", 2));
    test.hide(13);
    CHECK(test.cadence(3) == dark);
  }

  TEST_CASE("the menu's check mark is for the next start: the layout in force decides") {
    for (const int lines : {10, 20}) {
      CadenceConsole test(lines);
      test.set_letter(3, 'N');
      const std::string before = test.cadence(3);
      test.console.Lineweir.Line20Mode.on_click();
      CHECK(test.cadence(3) == before);
      CHECK(before == (lines == 10 ? std::string("\x0C\x08") : std::string("\x0C\0", 2)));
    }
  }
}

}  // namespace
}  // namespace lineweir::test
