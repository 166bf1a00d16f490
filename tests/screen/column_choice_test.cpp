#include "screen/column_choice.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "support/call_log_file.h"
#include "support/rows_of.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;
using Numbers = std::vector<int>;

void toggle(Console& console, int column) {
  CheckBox& box = console.DisplayOptionForm.CheckItem(column);
  box.value = 1 - box.value;
  box.on_click();
}

void enter_width(Console& console, int column, const std::string& width) {
  TextBox& box = console.DisplayOptionForm.WidthText(column);
  box.set_focus();
  box.text = width;
  console.DisplayOptionForm.focus(nullptr);
}

TEST_SUITE("screen/column_choice: boxes") {
  TEST_CASE("a checked column joins the list, the rows and the headings") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    const DisplayDataForm& options = console.DisplayOptionForm;
    CHECK_FALSE(form.labels_of(CallerField::State)(0).visible);
    toggle(console, 6);
    CHECK(options.List1.list.get() == Texts{"Time", "Caller Name", "City", "Comments", "State"});
    CHECK(options.WidthText(6).enabled);
    CHECK(options.WidthText(6).text == "600");
    CHECK(console.display.ColumnsInUse == Numbers{0, 1, 2, 3, 5, 11, 6});
    CHECK(console.display.ColumnShown[4] == -1);
    CHECK(console.display.ColumnOrder[4] == 4);
    CHECK(form.CaptionLabel(6).visible);
    for (int line = 0; line < 10; ++line) {
      CHECK(form.labels_of(CallerField::State)(line).visible);
      CHECK(form.labels_of(CallerField::State)(line).left == form.LineComments(line).left + 2500);
      CHECK(form.labels_of(CallerField::State)(line).width == 600);
    }

    toggle(console, 6);
    CHECK(options.List1.list.get() == Texts{"Time", "Caller Name", "City", "Comments"});
    CHECK_FALSE(options.WidthText(6).enabled);
    CHECK(options.WidthText(6).text == "");
    CHECK_FALSE(form.CaptionLabel(6).visible);
    CHECK_FALSE(form.labels_of(CallerField::State)(0).visible);
    CHECK(console.display.width_of(6) == 600);
  }

  TEST_CASE("a column that is checked stays hidden on the lines that aren't shown") {
    ScriptedConsole desk;
    Console& console = desk.console;
    console.DisplayOptionForm.LineCheck(4).value = 0;
    console.row_choice.RefreshVisibleRows();
    toggle(console, 12);
    CHECK(console.Lineweir.LineUser(3).visible);
    CHECK_FALSE(console.Lineweir.LineUser(4).visible);
  }

  TEST_CASE("without the optional columns the number and the status are left") {
    ScriptedConsole desk;
    Console& console = desk.console;
    for (const int column : {2, 3, 5, 11}) toggle(console, column);
    CHECK(console.DisplayOptionForm.List1.list_count() == 0);
    CHECK(console.display.ColumnsInUse == Numbers{0, 1});
    MainForm& form = console.Lineweir;
    for (int column = 0; column < column_count; ++column) {
      CHECK(form.column_labels(column)(0).visible == (column < 2));
      CHECK(form.CaptionLabel(column).visible == (column < 2));
    }
  }

  TEST_CASE("the boxes of the first two columns are checked and stay so") {
    ScriptedConsole desk;
    Console& console = desk.console;
    for (const int column : {number_column, status_column}) {
      CHECK(console.DisplayOptionForm.CheckItem(column).visible);
      CHECK_FALSE(console.DisplayOptionForm.CheckItem(column).enabled);
      CHECK(console.DisplayOptionForm.CheckItem(column).value == 1);
    }
    toggle(console, 0);
    toggle(console, 1);
    CHECK(console.display.ColumnsInUse == Numbers{0, 1, 2, 3, 5, 11});
  }
}

TEST_SUITE("screen/column_choice: widths") {
  TEST_CASE("the first two columns have a width too") {
    ScriptedConsole desk;
    Console& console = desk.console;
    const MainForm& form = console.Lineweir;
    console.Lineweir.DisplayDataOptionsMenu.on_click();
    CHECK(console.DisplayOptionForm.WidthText(0).shown());
    CHECK(console.DisplayOptionForm.WidthText(1).enabled);
    CHECK(console.DisplayOptionForm.WidthText(0).text == "350");
    CHECK(console.DisplayOptionForm.WidthText(1).text == "800");
    enter_width(console, 0, "500");
    enter_width(console, 1, "1000");
    for (int line = 0; line < 10; ++line) {
      CHECK(form.LineNumb(line).width == 500);
      CHECK(form.LineStatus(line).left == form.LineNumb(line).left + 500);
      CHECK(form.LineStatus(line).width == 1000);
      CHECK(form.LineTime(line).left == form.LineStatus(line).left + 1000);
    }
    CHECK(form.CaptionLabel(1).width == 1000);
  }

  TEST_CASE("the boxes show the screen's widths when the form is opened") {
    ScriptedConsole desk;
    Console& console = desk.console;
    resize(console, 18840, 7255);
    console.Lineweir.DisplayDataOptionsMenu.on_click();
    CHECK(console.DisplayOptionForm.WidthText(1).text == "1600");
    CHECK(console.DisplayOptionForm.WidthText(3).text == "3400");
    CHECK(console.DisplayOptionForm.WidthText(4).text == "");
  }

  TEST_CASE("an entered width is that of the heading and of all lines, and is stored") {
    ScriptedConsole desk;
    Console& console = desk.console;
    const MainForm& form = console.Lineweir;
    enter_width(console, 3, "1000");
    CHECK(console.display.ColumnWidth[1] == 1000);
    CHECK(form.CaptionLabel(3).width == 1000);
    for (int line = 0; line < 10; ++line) {
      CHECK(form.LineName(line).width == 1000);
      CHECK(form.LineCity(line).left == form.LineName(line).left + 1000);
    }
  }

  TEST_CASE("a width of 0 hides the column though it stays checked") {
    ScriptedConsole desk;
    Console& console = desk.console;
    const MainForm& form = console.Lineweir;
    enter_width(console, 3, "0");
    CHECK(console.DisplayOptionForm.CheckItem(3).value == 1);
    CHECK(form.LineName(0).width == 0);
    CHECK_FALSE(form.LineName(0).visible);
    CHECK_FALSE(form.CaptionLabel(3).visible);
    CHECK(form.LineCity(0).left == form.LineTime(0).left + 835);
    enter_width(console, 3, "900");
    CHECK(form.LineName(0).visible);
    CHECK(form.LineName(0).width == 900);
  }

  TEST_CASE("the number is read as far as it goes") {
    ScriptedConsole desk;
    Console& console = desk.console;
    enter_width(console, 3, " 800 twips");
    CHECK(console.display.width_of(3) == 800);
    enter_width(console, 3, "wide");
    CHECK(console.display.width_of(3) == 0);
  }

  TEST_CASE("a width that can't be is reported, and the box shows the present one again") {
    ScriptedConsole desk;
    Console& console = desk.console;
    for (const char* width : {"40000", "-1"}) {
      desk.take_trace();
      enter_width(console, 3, width);
      CHECK(console.display.width_of(3) == 1700);
      CHECK(console.DisplayOptionForm.WidthText(3).text == "1700");
      const Texts trace = desk.take_trace();
      REQUIRE(trace.size() == 1);
      CHECK(trace[0].starts_with("DisplayOptionForm_WidthText_LostFocus Error - "));
    }
  }

  TEST_CASE("while the columns are locked a box does nothing") {
    ScriptedConsole desk;
    Console& console = desk.console;
    console.display.ColumnsLocked = true;
    enter_width(console, 3, "1000");
    CHECK(console.display.width_of(3) == 1700);
    CHECK(console.Lineweir.LineName(0).width == 1700);
  }

  TEST_CASE("on a scaled form the boxes show the screen's widths, and take them") {
    ScriptedConsole desk;
    Console& console = desk.console;
    resize(console, 9420 * 3 / 2, 7255);
    console.display.fill_width_boxes();
    const TextBox& box = console.DisplayOptionForm.WidthText(3);
    CHECK(box.text == "2550");
    // Passing through a box changes nothing, however often.
    for (int time = 0; time < 5; ++time) enter_width(console, 3, box.text);
    CHECK(console.display.width_of(3) == 1700);
    enter_width(console, 3, "3000");
    CHECK(console.Lineweir.LineName(0).width == 3000);
    CHECK(console.display.width_of(3) == 2000);
    resize(console, 9420, 7255);
    CHECK(console.Lineweir.LineName(0).width == 2000);
  }

  TEST_CASE("a box filled for another size of the form isn't taken for the user's") {
    ScriptedConsole desk;
    Console& console = desk.console;
    console.display.fill_width_boxes();
    resize(console, 9420 * 3 / 2, 7255);
    console.DisplayOptionForm.WidthText(3).set_focus();
    console.DisplayOptionForm.focus(nullptr);
    CHECK(console.display.width_of(3) == 1700);
  }
}

TEST_SUITE("screen/column_choice: order") {
  TEST_CASE("a dragged heading moves one place at a time under the pointer") {
    ScriptedConsole desk;
    ListBox& list = desk.console.DisplayOptionForm.List1;
    list.on_drag(0, 1);
    CHECK(list.list.get() == Texts{"Caller Name", "Time", "City", "Comments"});
    CHECK(list.list_index == 1);
    list.on_drag(1, 3);
    CHECK(list.list.get() == Texts{"Caller Name", "City", "Comments", "Time"});
    list.on_drag(3, 0);
    CHECK(list.list.get() == Texts{"Time", "Caller Name", "City", "Comments"});
  }

  TEST_CASE("a drag over the same entry or past the list changes nothing") {
    ScriptedConsole desk;
    ListBox& list = desk.console.DisplayOptionForm.List1;
    list.on_drag(2, 2);
    list.on_drag(-1, 2);
    list.on_drag(2, 4);
    CHECK(list.list.get() == Texts{"Time", "Caller Name", "City", "Comments"});
    CHECK(desk.take_trace().empty());
  }

  TEST_CASE("the rows follow when the form is closed") {
    ScriptedConsole desk;
    Console& console = desk.console;
    console.Lineweir.DisplayDataOptionsMenu.on_click();
    CHECK(console.DisplayOptionForm.visible);
    console.DisplayOptionForm.List1.on_drag(0, 3);
    CHECK(console.display.ColumnsInUse == Numbers{0, 1, 2, 3, 5, 11});
    console.DisplayOptionForm.ExitCommand.on_click();
    CHECK_FALSE(console.DisplayOptionForm.visible);
    CHECK(console.display.ColumnsInUse == Numbers{0, 1, 3, 5, 11, 2});
    CHECK(console.display.ColumnOrder[0] == 3);
    const MainForm& form = console.Lineweir;
    CHECK(form.LineName(5).left == form.LineStatus(5).left + 800);
    CHECK(form.LineTime(5).left == form.LineComments(5).left + 2500);
    CHECK(form.CaptionLabel(2).left == form.LineTime(0).left);
  }
}

TEST_SUITE("screen/column_choice: the user's heading") {
  TEST_CASE("a new title goes to the box, the heading and the list") {
    ScriptedConsole desk;
    Console& console = desk.console;
    toggle(console, 12);
    desk.platform.dialogs.answer_input("Guest");
    console.DisplayOptionForm.UserRename.on_click();
    CHECK(console.DisplayOptionForm.CheckItem(12).caption == "Guest");
    CHECK(console.Lineweir.CaptionLabel(12).caption == "Guest");
    CHECK(console.DisplayOptionForm.List1.list.get().at(4) == "Guest");
    console.display.RefreshColumnOrder();
    CHECK(console.Lineweir.LineUser(0).visible);
  }

  TEST_CASE("no reply, an empty one and the same title change nothing") {
    for (const char* reply : {"", "   ", "User", " User "}) {
      ScriptedConsole desk;
      desk.platform.dialogs.answer_input(reply);
      desk.console.DisplayOptionForm.UserRename.on_click();
      CHECK(desk.console.Lineweir.CaptionLabel(12).caption == "User");
    }
    ScriptedConsole desk;
    desk.console.DisplayOptionForm.UserRename.on_click();
    CHECK(desk.console.Lineweir.CaptionLabel(12).caption == "User");
  }

  TEST_CASE("a title is as long as the settings can hold it, so that the next start has the same") {
    ScriptedConsole desk;
    desk.platform.dialogs.answer_input("  Number of the programme to be played  ");
    desk.console.DisplayOptionForm.UserRename.on_click();
    const std::string title = "Number of the programme to be";
    CHECK(desk.console.Lineweir.CaptionLabel(12).caption == title);
    ScriptedConsole next("D", encode_settings(desk.console.settings.collect()));
    CHECK(next.console.Lineweir.CaptionLabel(12).caption == title);
  }

  TEST_CASE("a title that another column has keeps both columns on the screen") {
    ScriptedConsole desk;
    Console& console = desk.console;
    toggle(console, 12);
    desk.platform.dialogs.answer_input("City");
    console.DisplayOptionForm.UserRename.on_click();
    console.display.RefreshColumnOrder();
    CHECK(console.display.ColumnsInUse == Numbers{0, 1, 2, 3, 5, 11, 12});
    console.display.collect();
    CHECK(console.display.ColumnOrder[3] == 2);
    CHECK(console.display.ColumnOrder[10] == 4);
    console.display.set_heading(user_column, "Guest");
    CHECK(console.DisplayOptionForm.List1.list.get() ==
          Texts{"Time", "Caller Name", "City", "Comments", "Guest"});
  }

  TEST_CASE("without an open log nobody is asked about one") {
    ScriptedConsole desk;
    desk.platform.dialogs.answer_input("Guest");
    desk.console.DisplayOptionForm.UserRename.on_click();
    const auto asked = desk.platform.dialogs.take_asked();
    REQUIRE(asked.size() == 1);
    const auto& question = std::get<platform::InputQuestion>(asked[0]);
    CHECK(question.prompt == "Please input the new title for the user field!");
    CHECK(question.default_text == "User");
  }

  TEST_CASE(
      "where the log's column can't be renamed, heading and file stay and a message says why") {
    ScriptedConsole desk;
    choose_log(desk);
    for (const int failure : {failure_number::database_in_use, failure_number::disk_full}) {
      desk.platform.failing_databases.fail(0);
      desk.console.call_log.recordset();
      desk.platform.failing_databases.fail(failure);
      desk.platform.dialogs.answer_input("Guest");
      desk.platform.dialogs.answer_question(true);
      desk.console.DisplayOptionForm.UserRename.on_click();
      CHECK(desk.console.Lineweir.CaptionLabel(12).caption == "User");
      CHECK(desk.console.DisplayOptionForm.CheckItem(12).caption == "User");
      const auto messages = desk.take_messages();
      REQUIRE(messages.size() == 1);
      CHECK(messages[0].ends_with(" The field keeps its title."));
    }
    desk.platform.failing_databases.fail(0);
    CHECK(desk.platform.databases.open(log_path)->table_columns("Caller Records")[13].name ==
          "Sponsor");
  }

  TEST_CASE("an open log's column gets the title if the user says so") {
    for (const bool wanted : {true, false}) {
      ScriptedConsole desk;
      choose_log(desk);
      desk.platform.dialogs.answer_input("Guest");
      desk.platform.dialogs.answer_question(wanted);
      desk.console.DisplayOptionForm.UserRename.on_click();
      CHECK(desk.console.Lineweir.CaptionLabel(12).caption == "Guest");
      const auto asked = desk.platform.dialogs.take_asked();
      REQUIRE(asked.size() == 2);
      CHECK(std::get<platform::YesNoQuestion>(asked[1]).text ==
            "Do you wish to change the name of the field in the currently open database as well?");
      const auto columns = desk.platform.databases.open(log_path)->table_columns("Caller Records");
      CHECK(columns[13].name == (wanted ? "Guest" : "Sponsor"));
    }
  }
}

}  // namespace
}  // namespace lineweir::test
