#include "desk/desk.h"

#include <doctest/doctest.h>

namespace lineweir::desk {
namespace {

constexpr Layout ten = Layout::TenLines;
constexpr Layout twenty = Layout::TwentyLines;

TEST_SUITE("desk/keys") {
  TEST_CASE("ten lines: main, conference, drops, holds") {
    for (int line = 1; line <= 10; ++line) {
      CHECK(key_code(ten, "main " + std::to_string(line)) == line);
      CHECK(key_code(ten, "conf " + std::to_string(line)) == 30 + line);
    }
    CHECK(key_code(ten, "drop1") == 81);
    CHECK(key_code(ten, "hold1") == 82);
    CHECK(key_code(ten, "drop2") == 84);
    CHECK(key_code(ten, "hold2") == 85);
  }

  TEST_CASE("twenty lines: one key a line, and one hybrid") {
    CHECK(key_code(twenty, "line 1") == 82);
    for (int line = 2; line <= 10; ++line) {
      CHECK(key_code(twenty, "line " + std::to_string(line)) == line - 1);
    }
    CHECK(key_code(twenty, "line 11") == 85);
    for (int line = 12; line <= 20; ++line) {
      CHECK(key_code(twenty, "line " + std::to_string(line)) == line + 19);
    }
    CHECK(key_code(twenty, "drop1") == 81);
    CHECK(key_code(twenty, "hold1") == 84);
  }

  TEST_CASE("the keys of both layouts") {
    for (const Layout layout : {ten, twenty}) {
      CHECK(key_code(layout, "next") == 88);
      CHECK(key_code(layout, "dial 1") == 61);
      CHECK(key_code(layout, "dial 9") == 69);
      CHECK(key_code(layout, "dial 0") == 70);
      CHECK(key_code(layout, "dial *") == 71);
      CHECK(key_code(layout, "dial #") == 72);
      CHECK(key_code(layout, "code 0") == 0);
      CHECK(key_code(layout, "code 255") == 255);
    }
  }

  TEST_CASE("there are no others") {
    for (const char* name :
         {"", "main", "main 0", "main 11", "main x", "main  1", "line 1", "dial", "dial 10",
          "dial x", "next 1", "drop1 1", "code", "code 256", "code 1000", "code -1", "MAIN 1"}) {
      CAPTURE(name);
      CHECK_FALSE(key_code(ten, name));
    }
    for (const char* name : {"line 0", "line 21", "main 1", "conf 1", "drop2", "hold2"}) {
      CAPTURE(name);
      CHECK_FALSE(key_code(twenty, name));
    }
  }
}

TEST_SUITE("desk/lamps") {
  TEST_CASE("ten lines: the pair is main and conference of the line") {
    Desk desk(ten);
    CHECK(desk.receive("\x0C\x08\xC0\x10\x10\xC9") ==
          std::vector<LampPlace>{{0, 0}, {1, 0}, {0, 9}, {1, 9}});
    CHECK(desk.shown("main 1") == "AIR");
    CHECK(desk.shown("conf 1") == "on");
    CHECK(desk.shown("conf 10") == "ring");
    CHECK(desk.shown("main 2") == "");
    CHECK_FALSE(desk.shown("line 1"));
    CHECK(desk.receive("\x0C\x08\xC0").empty());
  }

  TEST_CASE("twenty lines: the pair is a line and the one ten above") {
    Desk desk(twenty);
    desk.receive("\x0C\x18\xFEX\x10\xC0\x08\x0C\xC8");
    CHECK(desk.shown("line 1") == "AIR");
    CHECK(desk.shown("line 11") == "hold");
    CHECK(desk.shown("line 2") == "rdy");
    CHECK(desk.shown("line 12") == "ring");
    CHECK(desk.shown("line 10") == "on");
    CHECK(desk.shown("line 20") == "AIR");
  }

  TEST_CASE("an address without a lamp is noise") {
    Desk small(ten);
    CHECK(small.receive("\x0C\x0C\xCA\x0C\x0C\xFE").empty());
    CHECK(small.noise() == 6);
    Desk large(twenty);
    CHECK(large.receive("\x0C\x0C\xC9").empty());
    CHECK(large.noise() == 3);
  }

  TEST_CASE("a cadence without a name is a number") {
    CHECK(lamp_text(0) == "");
    CHECK(lamp_text(77) == "77");
  }

  TEST_CASE("the picture shows lamps in their keys") {
    Desk desk(ten);
    desk.receive("\x0C\x08\xC0\x10\x10\xC9");
    CHECK(desk.picture() ==
          "  line    1     2     3     4     5     6     7     8     9     10\n"
          "  main  [AIR ][    ][    ][    ][    ][    ][    ][    ][    ][ring]\n"
          "  conf  [on  ][    ][    ][    ][    ][    ][    ][    ][    ][ring]\n"
          "\n"
          "  drop1 [DROP] hold1 [HOLD]   drop2 [DROP] hold2 [HOLD]   next [NEXT]\n"
          "  dial  [1][2][3][4][5][6][7][8][9][0][*][#]\n");
    Desk large(twenty);
    large.receive("\x0C\x18\xFE");
    CHECK(large.picture() ==
          "  line    1     2     3     4     5     6     7     8     9     10\n"
          "        [AIR ][    ][    ][    ][    ][    ][    ][    ][    ][    ]\n"
          "  line    11    12    13    14    15    16    17    18    19    20\n"
          "        [hold][    ][    ][    ][    ][    ][    ][    ][    ][    ]\n"
          "\n"
          "  drop1 [DROP] hold1 [HOLD]   next [NEXT]\n"
          "  dial  [1][2][3][4][5][6][7][8][9][0][*][#]\n");
  }
}

}  // namespace
}  // namespace lineweir::desk
