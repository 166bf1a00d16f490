#include "screen/visible_rows.h"

#include <doctest/doctest.h>

#include <vector>

#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

// The user's click on a line's box.
void toggle_row(Console& console, int line) {
  CheckBox& box = console.DisplayOptionForm.LineCheck(line);
  box.value = 1 - box.value;
  box.on_click();
}

TEST_SUITE("screen/visible_rows") {
  TEST_CASE("each line has a box that is checked at first") {
    ScriptedConsole desk;
    const auto& boxes = desk.console.DisplayOptionForm.LineCheck;
    CHECK(boxes.count() == 10);
    for (int line = 0; line < 10; ++line) {
      CHECK(boxes(line).value == 1);
      CHECK(boxes(line).visible);
      CHECK(boxes(line).caption == "Line " + std::to_string(line + 1));
    }
    desk.console.layout.set_line_count(20);
    CHECK(boxes.count() == 20);
    CHECK(boxes(19).value == 1);
    desk.console.layout.set_line_count(10);
    CHECK(boxes.count() == 10);
  }

  TEST_CASE("the lines that are shown stand in the rows from the top") {
    ScriptedConsole desk;
    Console& console = desk.console;
    toggle_row(console, 3);
    toggle_row(console, 0);
    CHECK(console.program.VisibleLines == 8);
    CHECK(console.visible_rows.rows() == std::vector<int>{-1, 0, 1, -1, 2, 3, 4, 5, 6, 7});
    CHECK(console.visible_rows.first_line() == 1);
    const MainForm& form = console.Lineweir;
    CHECK(form.DataRow(1).top == 420);
    CHECK(form.DataRow(4).top == 420 + 2 * 315);
    CHECK(form.LineName(9).top == 420 + 7 * 315 + 45);
    CHECK(form.OnHybrid2(9).top == 420 + 7 * 315);
    CHECK(form.ScreenBottom.top == 420 + 8 * 315);
  }

  TEST_CASE("a line that isn't shown has all its elements hidden") {
    ScriptedConsole desk;
    Console& console = desk.console;
    desk.box_sends("R03");
    MainForm& form = console.Lineweir;
    CHECK(form.CIcon1(3).visible);
    toggle_row(console, 3);
    CHECK_FALSE(form.DataRow(3).visible);
    CHECK_FALSE(form.DataRowImage(3).visible);
    CHECK_FALSE(form.OnHybrid1(3).visible);
    CHECK_FALSE(form.OnHybrid2(3).visible);
    CHECK_FALSE(form.CIcon1(3).visible);
    CHECK_FALSE(form.CIcon2(3).visible);
    for (int column = 0; column < column_count; ++column) {
      CHECK_FALSE(form.column_labels(column)(3).visible);
      CHECK_FALSE(form.MyMark(3 * column_count + column).visible);
    }
  }

  TEST_CASE("a report on a line that isn't shown shows nothing until the line is") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    toggle_row(console, 3);
    desk.box_sends("N03");
    CHECK_FALSE(form.CIcon1(3).visible);
    toggle_row(console, 3);
    CHECK(form.CIcon1(3).visible);
    CHECK(form.CIcon1(3).picture == "RedIcon");
    CHECK_FALSE(form.CIcon2(3).visible);
    CHECK(form.DataRow(3).picture == "DataRowRed");
    CHECK(form.LineStatus(3).visible);
  }

  TEST_CASE("another count puts the form at its design size, the same count leaves it") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    form.width = 12000;
    form.height = 9000;
    form.window_state = window_maximised;
    toggle_row(console, 9);
    CHECK(form.width == 9420);
    CHECK(form.height == 9 * 315 + 4105);
    CHECK(form.window_state == int{window_normal});
    CHECK(form.visible);
    CHECK_FALSE(console.Standby.visible);

    form.width = 12000;
    console.DisplayOptionForm.LineCheck(9).value = 1;
    console.DisplayOptionForm.LineCheck(2).value = 0;
    console.row_choice.RefreshVisibleRows();
    CHECK(form.width == 12000);
    CHECK(form.DataRow(9).visible);
    CHECK_FALSE(form.DataRow(2).visible);
    CHECK(form.DataRow(3).top == 420 + 2 * 315);
  }

  TEST_CASE("the columns are locked while a line box is handled, and only then") {
    ScriptedConsole desk;
    Console& console = desk.console;
    toggle_row(console, 9);
    CHECK_FALSE(console.display.ColumnsLocked);
    console.display.ColumnsLocked = true;
    toggle_row(console, 9);
    CHECK(console.display.ColumnsLocked);
  }

  TEST_CASE("the boxes of the lines that exist stand one after the other") {
    ScriptedConsole desk;
    Console& console = desk.console;
    console.layout.set_line_count(20);
    const auto& boxes = console.DisplayOptionForm.LineCheck;
    boxes(2).value = 0;
    boxes(2).enabled = false;
    console.visible_rows.RedefineDisplaySreen();
    CHECK_FALSE(boxes(2).visible);
    CHECK(boxes(3).left == boxes(0).left);
    CHECK(boxes(3).top - boxes(1).top == boxes(1).top - boxes(0).top);
    CHECK(boxes(10).left == boxes(0).left);
    CHECK(boxes(11).left > boxes(0).left + boxes(0).width);
    CHECK(boxes(11).top == boxes(0).top);
    CHECK(boxes(19).left + boxes(19).width <= console.DisplayOptionForm.width);
  }

  TEST_CASE("more lines bring more rows, fewer take them and their marks away") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    console.lines.CallerData(4).set(CallerField::City, "Leeds");
    console.layout.set_line_count(20);
    console.layout.RedefineScreen();
    CHECK(console.program.VisibleLines == 20);
    CHECK(form.DataRow.count() == 20);
    CHECK(form.LineUser.count() == 20);
    CHECK(console.lines.CallerData(4)[CallerField::City] == "Leeds");
    CHECK(form.MyMark(19 * column_count).visible);
    console.layout.set_line_count(10);
    console.layout.RedefineScreen();
    CHECK(form.DataRow.count() == 10);
    CHECK(console.lines.CallerData(4)[CallerField::City] == "Leeds");
    CHECK(form.MyMark.count() == 260);
    CHECK_FALSE(form.MyMark(19 * column_count).visible);
    CHECK(form.width == 9420);
  }

  TEST_CASE("a count set by itself is followed by arrays and rows") {
    ScriptedConsole desk;
    Console& console = desk.console;
    console.lines.LineCount = 20;
    console.layout.RedefineScreen();
    CHECK(console.lines.StatusLetter.size() == 20);
    CHECK(console.Lineweir.DataRow(19).visible);
  }
}

}  // namespace
}  // namespace lineweir::test
