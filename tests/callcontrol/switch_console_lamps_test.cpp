#include "callcontrol/switch_console_lamps.h"

#include <doctest/doctest.h>

#include "base/text.h"

namespace lineweir::test {
namespace {

int address(int line, bool twenty_lines) {
  return code_of(lamp_message(line, twenty_lines, true, "ab")->back());
}

TEST_SUITE("callcontrol/switch_console_lamps") {
  TEST_CASE("ten lines: each line has the address 192 and its number") {
    for (int line = 0; line < 10; ++line) {
      CHECK(address(line, false) == 192 + line);
      CHECK(*lamp_message(line, false, true, "\x0C\x08") ==
            std::string("\x0C\x08") + static_cast<char>(192 + line));
    }
  }

  TEST_CASE("ten lines: a hidden line is put out") {
    for (int line = 0; line < 10; ++line) {
      const std::string dark = std::string(2, '\0') + static_cast<char>(192 + line);
      CHECK(lamp_message(line, false, false, "ab") == dark);
    }
  }

  TEST_CASE("twenty lines: a line shares its address with the line ten above") {
    for (int line = 1; line <= 9; ++line) {
      CHECK(address(line, true) == 191 + line);
      CHECK(address(line + 10, true) == 181 + line + 10);
    }
    CHECK(address(0, true) == 254);
    CHECK(address(10, true) == 254);
  }

  TEST_CASE("twenty lines: a hidden line has no message of its own") {
    for (int line = 0; line < 20; ++line) CHECK_FALSE(lamp_message(line, true, false, "ab"));
  }

  TEST_CASE("a message has three bytes") {
    for (int line = 0; line < 20; ++line) {
      CHECK(lamp_message(line, true, true, "ab")->size() == 3);
      CHECK(lamp_message(line, false, false, "ab")->size() == 3);
    }
  }
}

}  // namespace
}  // namespace lineweir::test
