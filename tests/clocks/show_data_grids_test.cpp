#include <doctest/doctest.h>

#include "clocks/editor_fixture.h"

namespace lineweir::test {
namespace {

constexpr int down_arrow = 40;
const std::string row_ends_early = "Values in Column 2 must be greater than values in Column 1!";
const std::string row_ends_late = "Times may not be later than Show End!";

int press_down(Grid& grid) {
  int key_code = down_arrow;
  grid.on_key_down(key_code, 0);
  return key_code;
}

TEST_SUITE("clocks/show data grids") {
  TEST_CASE("the time column takes times, the text column any text") {
    EditorConsole test;
    test.open();
    Grid& grid = test.editor.Grid1;
    test.type(grid, "z101500");
    CHECK(grid.cell(1, 1) == "10:15:00");
    grid.select(1, 2);
    test.type(grid, "  Caf\xE9 & more than twenty characters");
    CHECK(grid.cell(1, 2) == "  Caf\xE9 & more than twenty characters");
    int key = 1;
    grid.on_key_press(key);
    CHECK(key == 0);
    CHECK(grid.cell(1, 2).size() == 36);
  }

  TEST_CASE("a text takes each character of the set but the delete character") {
    EditorConsole test;
    test.open();
    Grid& grid = test.editor.Grid1;
    grid.select(1, 2);
    test.type(grid, " ~\x7F\x80\xFF");
    CHECK(grid.cell(1, 2) == " ~\x80\xFF");
    int beyond = 256;
    grid.on_key_press(beyond);
    CHECK(grid.cell(1, 2) == " ~\x80\xFF");
  }

  TEST_CASE("x in an empty time cell gives xx:") {
    EditorConsole test;
    test.open();
    test.type(test.editor.Grid2, "X30");
    CHECK(test.cell(2, 1, 1) == "xx:30:");
    test.type(test.editor.Grid2, "\b\b\b\b");
    CHECK(test.cell(2, 1, 1) == "");
  }

  TEST_CASE("the start of a row is never typed in") {
    EditorConsole test;
    test.open();
    test.editor.Grid1.select(1, 0);
    test.type(test.editor.Grid1, "10x\b");
    CHECK(test.cell(1, 1, 0) == "");
  }

  TEST_CASE("backspace in a text takes one character off, unless only blanks stand there") {
    EditorConsole test;
    test.open();
    Grid& grid = test.editor.Grid1;
    grid.select(1, 2);
    test.type(grid, "ab \b");
    CHECK(grid.cell(1, 2) == "ab");
    grid.set_cell(1, 2, "   ");
    test.type(grid, "\b");
    CHECK(grid.cell(1, 2) == "   ");
  }

  TEST_CASE("tab and enter move down in the column") {
    EditorConsole test;
    test.open();
    Grid& grid = test.editor.Grid1;
    grid.select(3, 2);
    test.type(grid, "\t");
    CHECK(grid.row == 4);
    test.type(grid, "\r");
    CHECK(grid.row == 5);
    CHECK(grid.col == 2);
    CHECK(test.editor.focused() == &grid);
  }

  TEST_CASE("behind row 20 the rows go on in the other grid, both ways") {
    EditorConsole test;
    test.open();
    for (const int from : {1, 2}) {
      Grid& grid = test.grid(from);
      Grid& other = test.grid(3 - from);
      for (const char* key : {"\t", "\r"}) {
        test.editor.focus(&grid);
        grid.select(20, 2);
        test.type(grid, key);
        CHECK(other.row == 1);
        CHECK(other.col == 2);
        CHECK(test.editor.focused() == &other);
        other.select(9, 1);
      }
      test.editor.focus(&grid);
      CHECK(press_down(grid) == 0);
      CHECK(other.row == 1);
      CHECK(other.col == 2);
      CHECK(test.editor.focused() == &other);
    }
  }

  TEST_CASE("the down arrow above row 20 is the grid's own") {
    EditorConsole test;
    test.open();
    test.editor.Grid1.select(19, 1);
    CHECK(press_down(test.editor.Grid1) == down_arrow);
    CHECK(test.editor.Grid1.row == 19);
  }

  TEST_CASE("a move of the selection carries ends over and finds the first fault") {
    EditorConsole test;
    test.plan = plan_of("10:00:00", "11:00:00");
    test.open();
    Grid& grid = test.editor.Grid1;
    test.type(grid, "101000\r");
    CHECK(grid.cell(2, 0) == "10:10:00");
    CHECK(test.messages.empty());
    test.type(grid, "100500\r");
    CHECK(test.messages == std::vector<std::string>{row_ends_early});
    CHECK(grid.cell(2, 1) == "10:05:00");
    CHECK(grid.row == 3);
    CHECK(test.console.MyMsgbox.left == test.form.left + 2000);
  }

  TEST_CASE("a row later than Show End is refused") {
    EditorConsole test;
    test.plan = plan_of("xx:00:00", "xx:15:00");
    test.open();
    test.type(test.editor.Grid1, "x3000\r");
    CHECK(test.messages == std::vector<std::string>{row_ends_late});
    CHECK(test.cell(1, 1, 1) == "xx:30:00");
  }

  TEST_CASE("the second grid is checked by itself") {
    EditorConsole test;
    test.plan = plan_of("10:00:00", "11:00:00");
    test.open();
    test.type(test.editor.Grid2, "104000\r103000\r");
    CHECK(test.messages == std::vector<std::string>{row_ends_early});
    CHECK(test.cell(1, 2, 0) == "");
  }

  TEST_CASE("a row that reaches Show End blanks the headers of the time columns") {
    EditorConsole test;
    test.plan = plan_of("10:00:00", "11:00:00", {{"", ""}, {"10:30:00", "Later row"}});
    test.open();
    test.type(test.editor.Grid1, "110000\r");
    CHECK(test.cell(1, 0, 0) == "");
    CHECK(test.cell(1, 0, 1) == "");
    CHECK(test.cell(1, 0, 2) == "Text");
    CHECK(test.cell(2, 0, 0) == "Time");
    CHECK(test.cell(1, 2, 1) == "10:30:00");
    CHECK(test.messages.empty());
    test.editor.CancelOption.on_click();
    test.open();
    CHECK(test.cell(1, 0, 0) == "Time");
  }

  TEST_CASE("a begun time is reported in the trace and the walk ends there") {
    EditorConsole test;
    test.plan = plan_of("10:00:00", "11:00:00");
    test.open();
    test.type(test.editor.Grid1, "101\r");
    CHECK(test.trace == std::vector<std::string>{"Form2_Grid1_SelChange Error - Type mismatch"});
    CHECK(test.messages.empty());
    CHECK(test.editor.Grid1.row == 2);
  }

  TEST_CASE("the second grid takes over the end of the first one when it gets the focus") {
    EditorConsole test;
    test.open();
    test.editor.Grid1.set_cell(20, 1, " 10:50:00");
    test.editor.focus(&test.editor.Grid2);
    CHECK(test.cell(2, 1, 0) == "10:50:00");
  }
}

}  // namespace
}  // namespace lineweir::test
