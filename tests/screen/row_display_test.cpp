#include "screen/row_display.h"

#include <doctest/doctest.h>

#include <cmath>
#include <string>
#include <vector>

#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

TEST_SUITE("screen/row_display: icons") {
  TEST_CASE("the five values of an icon") {
    ScriptedConsole desk;
    const MainForm& form = desk.console.Lineweir;
    constexpr std::array<std::string_view, 5> pictures = {"", "RedIcon", "GreenIcon", "YellowIcon",
                                                          "BlueIcon"};
    for (int value = 1; value <= 4; ++value) {
      desk.console.rows.HybridPictureSet(3, value, 0);
      CHECK(form.CIcon1(3).visible);
      CHECK(form.CIcon1(3).picture == pictures[static_cast<std::size_t>(value)]);
      CHECK_FALSE(form.CIcon2(3).visible);
      desk.console.rows.HybridPictureSet(3, 0, value);
      CHECK_FALSE(form.CIcon1(3).visible);
      CHECK(form.CIcon2(3).visible);
      CHECK(form.CIcon2(3).picture == pictures[static_cast<std::size_t>(value)]);
    }
    CHECK(form.OnHybrid1(3).visible);
    CHECK(form.OnHybrid2(3).visible);
  }

  TEST_CASE("any other value leaves the icon alone") {
    ScriptedConsole desk;
    const MainForm& form = desk.console.Lineweir;
    desk.console.rows.HybridPictureSet(0, 2, 0);
    for (const int value : {-1, 5, 255}) {
      desk.console.rows.HybridPictureSet(0, value, value);
      CHECK(form.CIcon1(0).picture == "GreenIcon");
      CHECK(form.CIcon1(0).visible);
      CHECK_FALSE(form.CIcon2(0).visible);
    }
  }

  TEST_CASE("the step of a pressed button is rounded to the nearest twip, never cut off") {
    for (int height = 0; height <= 4000; ++height) {
      CAPTURE(height);
      // 20 / 375 of a whole height never lies in the middle of two twips, where roundings differ.
      CHECK((2 * 20 * height) % (2 * 375) != 375);
      const int nearest = (2 * 20 * height + 375) / (2 * 375);
      const int left = icon_offset(height, true).left;
      const int top = icon_offset(height, true).top;
      CHECK(std::abs(left - (nearest + 80.0 / 375 * height)) <= 0.5);
      CHECK(std::abs(top - (nearest + 120.0 / 315 * height)) <= 0.5);
    }
    CHECK(icon_offset(315, true).top - icon_offset(315, false).top == 17);
  }

  TEST_CASE("an icon keeps its place on a button of any height") {
    struct Row {
      int height;
      IconOffset up;
      IconOffset down;
    };
    for (const Row& row : {Row{315, {77, 120}, {84, 137}}, Row{375, {90, 143}, {100, 163}},
                           Row{630, {144, 240}, {168, 274}}, Row{0, {10, 0}, {0, 0}}}) {
      CAPTURE(row.height);
      CHECK(icon_offset(row.height, false).left == row.up.left);
      CHECK(icon_offset(row.height, false).top == row.up.top);
      CHECK(icon_offset(row.height, true).left == row.down.left);
      CHECK(icon_offset(row.height, true).top == row.down.top);
    }
  }
}

TEST_SUITE("screen/row_display: marks") {
  TEST_CASE("a mark stands at the right edge of its column, as high as its row") {
    ScriptedConsole desk;
    const MainForm& form = desk.console.Lineweir;
    for (const int line : {0, 7}) {
      int marks = 0;
      for (const int column : desk.console.display.ColumnsInUse) {
        const Picture& mark = form.MyMark(column_count * line + column);
        const Label& label = desk.console.Lineweir.column_labels(column)(line);
        CHECK(mark.visible);
        CHECK(mark.left == label.left + label.width);
        CHECK(mark.top == form.DataRow(line).top);
        CHECK(mark.height == form.DataRow(line).height);
        CHECK(mark.width == 30);
        ++marks;
      }
      CHECK(marks == 6);
      CHECK_FALSE(form.MyMark(column_count * line + user_column).visible);
    }
  }

  TEST_CASE("the marks follow the form's size to a ten-thousandth of its width") {
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    form.width = 23550;
    desk.console.layout.RedefineScreen();
    for (const int column : desk.console.display.ColumnsInUse) {
      const Label& label = form.column_labels(column)(2);
      const int away = form.MyMark(26 + column).left - (label.left + label.width);
      CHECK(away >= -2);
      CHECK(away <= 2);
    }
  }

  TEST_CASE("the marks take the colour of the strip") {
    ScriptedConsole desk;
    Console& console = desk.console;
    const auto mark = [&] { return console.Lineweir.MyMark(13 * 5).picture.get(); };
    console.rows.set_row_color(5, RowColor::Red);
    console.rows.DrawMark(5);
    CHECK(mark() == "MarkRed");
    CHECK(console.Lineweir.MyMark(13 * 4).picture == "MarkWhite");
    console.rows.set_row_color(5, RowColor::Green);
    console.rows.DrawMark();
    CHECK(mark() == "MarkGreen");
    console.rows.set_row_color(5, RowColor::White);
    console.rows.DrawMark();
    CHECK(mark() == "MarkWhite");
  }

  TEST_CASE("the array of marks grows with the lines and never shrinks") {
    ScriptedConsole desk;
    Console& console = desk.console;
    CHECK(console.Lineweir.MyMark.count() == 130);
    console.layout.set_line_count(20);
    console.layout.RedefineScreen();
    CHECK(console.Lineweir.MyMark.count() == 260);
    console.layout.set_line_count(10);
    console.layout.RedefineScreen();
    CHECK(console.Lineweir.MyMark.count() == 260);
  }

  TEST_CASE("marks are thin on a strip of less than 50 twips") {
    CHECK(mark_width_on(49) == 5);
    CHECK(mark_width_on(50) == 30);
    ScriptedConsole desk;
    MainForm& form = desk.console.Lineweir;
    desk.console.Lineweir.MarkerPointTimer.on_timer();
    form.DataRow(0).width = 49;
    desk.console.Lineweir.MarkerPointTimer.on_timer();
    CHECK(form.MyMark(0).width == 30);
    form.height = form.height + 1;
    desk.console.Lineweir.MarkerPointTimer.on_timer();
    CHECK(form.MyMark(0).width == 5);
    CHECK(form.MyMark(12).width == 5);
    CHECK(form.MyMark(13).width == 30);
  }
}

TEST_SUITE("screen/row_display: texts and strips") {
  TEST_CASE("the status text of a letter alone") {
    ScriptedConsole desk;
    struct Row {
      char letter;
      std::string_view text;
    };
    for (const Row& row :
         {Row{'N', "On Air"}, Row{'C', "On Air"}, Row{'S', "Ready"}, Row{'H', "Held"},
          Row{'B', "Set Busy"}, Row{'L', "Locked"}, Row{'K', "Locked"}, Row{'Y', ""}, Row{'P', ""},
          Row{'O', ""}, Row{'E', ""}, Row{'R', ""}, Row{' ', ""}, Row{'\x81', ""}}) {
      CAPTURE(row.letter);
      desk.console.lines.StatusLetter(6) = row.letter;
      desk.console.Lineweir.LineStatus(6).caption = "something";
      desk.console.rows.SetStatusText(6);
      CHECK(desk.console.Lineweir.LineStatus(6).caption == row.text);
    }
  }

  TEST_CASE("the image of a strip follows the strip") {
    ScriptedConsole desk;
    desk.console.rows.set_row_color(2, RowColor::Red);
    CHECK(desk.console.Lineweir.DataRow(2).picture == "DataRowRed");
    CHECK(desk.console.Lineweir.DataRowImage(2).picture == "DataRowRed");
  }

  TEST_CASE("the cadence of a line, with ten and with twenty lines") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    console.lines.StatusLetter(3) = 'C';
    CHECK(console.rows.GetCadence(3) == std::string("\x08\x0C"));
    console.lines.ThePhoneFlag = 3;
    form.MitelPhone1.checked = true;
    CHECK(console.rows.GetCadence(3) == std::string("\x08\x08"));
    form.OnHybrid1(3).visible = false;
    CHECK(console.rows.GetCadence(3) == std::string(2, '\0'));

    form.Line20Mode.checked = true;
    console.layout.set_line_count(20);
    console.layout.RedefineScreen();
    console.lines.StatusLetter(13) = 'S';
    console.lines.StatusLetter(19) = 'S';
    CHECK(console.rows.GetCadence(3) == std::string("\x08\x58"));
    CHECK(console.rows.GetCadence(13) == console.rows.GetCadence(3));
    CHECK(console.rows.GetCadence(9) == std::string(2, '\0'));
  }
}

}  // namespace
}  // namespace lineweir::test
