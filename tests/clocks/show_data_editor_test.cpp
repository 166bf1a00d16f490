#include "clocks/show_data_editor.h"

#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "clocks/editor_fixture.h"

namespace lineweir::test {
namespace {

using platform::FileQuestion;

TEST_SUITE("clocks/show data editor") {
  TEST_CASE("loading shows the plan, trimmed, with each end as the next row's start") {
    EditorConsole test;
    test.plan = plan_of(" 10:00:00", "11:00:00", {{" 10:10:00", " Opening"}, {"10:20:00", "B"}});
    test.plan.ShowTimes(22) = "10:50:00";
    test.plan.ShowTimes(23) = "10:51:00";
    test.plan.ShowTexts(42) = " Last";
    test.open();
    CHECK(test.editor.visible);
    CHECK(test.editor.modal);
    CHECK(test.editor.caption == "Show Data");
    CHECK(test.editor.StartTime.text == "10:00:00");
    CHECK(test.editor.Text1.text == "11:00:00");
    CHECK(test.cell(1, 1, 0) == "10:00:00");
    CHECK(test.cell(1, 1, 1) == "10:10:00");
    CHECK(test.cell(1, 1, 2) == "Opening");
    CHECK(test.cell(1, 2, 0) == "10:10:00");
    CHECK(test.cell(1, 20, 1) == "10:50:00");
    CHECK(test.cell(2, 1, 0) == "10:50:00");
    CHECK(test.cell(2, 1, 1) == "10:51:00");
    CHECK(test.cell(2, 20, 2) == "Last");
    CHECK(test.editor.Label4.caption == "NoName.TXT");
    CHECK(test.plan.ShowTimes(1).text() == "10:00:00   ");
    CHECK(test.plan.ShowTimes(3).text() == "10:10:00   ");
    CHECK(test.plan.ShowTexts(42).text().starts_with("Last"));
  }

  TEST_CASE("times are shown as the clock tells them, texts as they are") {
    EditorConsole test;
    test.open();
    for (const int number : {1, 2}) {
      CHECK(test.grid(number).shown_as(1, "14:15:00") == "02:15:00 PM");
      CHECK(test.grid(number).shown_as(2, "14:15:00") == "14:15:00");
    }
    test.type(test.editor.StartTime, "141500");
    CHECK(test.editor.StartShown.caption == "02:15:00 PM");
  }

  TEST_CASE("a time that is typed and past already is told at once, and not any more without it") {
    EditorConsole test;
    test.open();
    CHECK_FALSE(test.editor.PastRow.visible);
    test.type(test.editor.StartTime, "080000");
    test.type(test.editor.Text1, "090000");
    CHECK(test.editor.PastRow.visible);
    CHECK(test.editor.PastLabel.caption == "Show End, 09:00:00 AM, is already past today.");
    test.type(test.editor.Text1, "\b\b\b\b\b\b");
    CHECK_FALSE(test.editor.PastRow.visible);
  }

  TEST_CASE("both grids have their headers") {
    EditorConsole test;
    test.open();
    for (const int grid : {1, 2}) {
      CHECK(test.cell(grid, 0, 0) == "Time");
      CHECK(test.cell(grid, 0, 1) == "Time");
      CHECK(test.cell(grid, 0, 2) == "Text");
    }
    CHECK(test.editor.Grid1.column_widths == std::vector<int>{1000, 1000, 2497});
    CHECK(test.editor.Grid2.column_widths == std::vector<int>{1000, 1000, 2677});
  }

  TEST_CASE("exit stores boxes and grids, writes the file and closes") {
    EditorConsole test;
    test.open();
    test.editor.StartTime.text = "10:00:00";
    test.editor.Text1.text = "11:00:00";
    test.editor.Grid1.set_cell(1, 1, "10:10:00");
    test.editor.Grid1.set_cell(20, 2, "A text of 25 characters..");
    test.editor.Grid2.set_cell(1, 1, "10:50:00");
    test.editor.Grid2.set_cell(20, 2, "Last");
    test.plan.ShowTexts(1) = "gone";
    test.editor.Exit.on_click();
    CHECK_FALSE(test.editor.visible);
    CHECK(test.plan.ShowTimes(1).trimmed() == "10:00:00");
    CHECK(test.plan.ShowTexts(1).trimmed().empty());
    CHECK(test.plan.ShowTimes(2).trimmed() == "11:00:00");
    CHECK(test.plan.ShowTimes(3).trimmed() == "10:10:00");
    CHECK(test.plan.ShowTexts(22).text() == "A text of 25 charact");
    CHECK(test.plan.ShowTimes(23).trimmed() == "10:50:00");
    CHECK(test.plan.ShowTexts(42).trimmed() == "Last");
    CHECK(test.platform.files.read("NoName.txt") == encode_show_plan(test.plan));
  }

  TEST_CASE("save stores and writes, and the form stays") {
    EditorConsole test;
    test.open();
    test.editor.StartTime.text = "10:00:00";
    test.editor.SaveOption.on_click();
    CHECK(test.editor.visible);
    CHECK(test.platform.files.read("NoName.txt") == encode_show_plan(plan_of("10:00:00", "")));
  }

  TEST_CASE("cancel, the menu's exit and the window's close keep nothing") {
    EditorConsole test;
    const auto& close_by = {std::function<void()>([&] { test.editor.CancelOption.on_click(); }),
                            std::function<void()>([&] { test.editor.Bye.on_click(); }),
                            std::function<void()>([&] { test.editor.close(); })};
    for (const auto& close : close_by) {
      test.open();
      test.editor.StartTime.text = "10:00:00";
      close();
      CHECK_FALSE(test.editor.visible);
      CHECK(test.plan == ShowPlan{});
      CHECK(test.platform.files.read("NoName.txt") == "");
    }
    test.open();
    CHECK(test.editor.StartTime.text == "");
  }

  TEST_CASE("new asks for a file, blanks the plan and shows the form anew") {
    EditorConsole test;
    test.plan = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}});
    test.open();
    test.platform.dialogs.answer_file("fresh.txt");
    test.editor.New.on_click();
    const FileQuestion question = test.last_question();
    CHECK(question.title == "New");
    CHECK(question.filter == "All Files (*.*)|*.*|Text Files (*.txt)|*.txt");
    CHECK(question.for_saving);
    CHECK(test.plan == ShowPlan{});
    CHECK(test.platform.files.read("fresh.txt") == std::string(1302, ' '));
    CHECK(test.editor.visible);
    CHECK(test.editor.StartTime.text == "");
    CHECK(test.cell(1, 1, 1) == "");
    CHECK(test.editor.Label4.caption == "fresh.txt");
    CHECK(test.console.show_plan.TheDataFileName == "fresh.txt");
  }

  TEST_CASE("open asks for a file and shows its plan") {
    EditorConsole test;
    const ShowPlan other = plan_of("12:00:00", "13:00:00", {{"12:10:00", "Noon"}});
    test.platform.files.replace("noon.txt", encode_show_plan(other));
    test.open();
    test.editor.StartTime.text = "10:00:00";
    test.platform.dialogs.answer_file("noon.txt");
    test.editor.Open.on_click();
    const FileQuestion question = test.last_question();
    CHECK(question.title == "Open");
    CHECK(question.filter == "All Files (*.*)|*.*|Text Files (*.txt)|*.txt");
    CHECK_FALSE(question.for_saving);
    CHECK(test.plan == other);
    CHECK(test.editor.StartTime.text == "12:00:00");
    CHECK(test.cell(1, 1, 2) == "Noon");
    CHECK(test.editor.Label4.caption == "noon.txt");
  }

  TEST_CASE("save as stores under another name, which is the open one from then on") {
    EditorConsole test;
    test.open();
    test.editor.StartTime.text = "10:00:00";
    test.platform.dialogs.answer_file("copy.txt");
    test.editor.SaveAs.on_click();
    const FileQuestion question = test.last_question();
    CHECK(question.title == "Save As");
    CHECK(question.filter == "All Files (*.*)|*.*|Text Files(*.txt)|*.txt");
    CHECK(question.for_saving);
    CHECK(test.platform.files.read("copy.txt") == encode_show_plan(plan_of("10:00:00", "")));
    CHECK(test.editor.StartTime.text == "10:00:00");
    CHECK(test.editor.Label4.caption == "copy.txt");
    test.editor.Text1.text = "11:00:00";
    test.editor.SaveOption.on_click();
    CHECK(test.platform.files.read("copy.txt") ==
          encode_show_plan(plan_of("10:00:00", "11:00:00")));
    CHECK(test.platform.files.read("NoName.txt") == "");
  }

  TEST_CASE("a cancelled file dialog changes nothing") {
    EditorConsole test;
    test.open();
    test.editor.StartTime.text = "10:00:00";
    for (MenuItem* item : {&test.editor.New, &test.editor.Open, &test.editor.SaveAs}) {
      item->on_click();
    }
    CHECK(test.editor.StartTime.text == "10:00:00");
    CHECK(test.editor.Label4.caption == "NoName.TXT");
    CHECK(test.plan == ShowPlan{});
  }

  TEST_CASE("a cancel after a file command doesn't undo it") {
    EditorConsole test;
    test.plan = plan_of("10:00:00", "11:00:00");
    test.open();
    test.platform.dialogs.answer_file("fresh.txt");
    test.editor.New.on_click();
    test.editor.CancelOption.on_click();
    CHECK(test.plan == ShowPlan{});
    CHECK(test.console.show_plan.TheDataFileName == "fresh.txt");
  }

  TEST_CASE("deleting a row moves the second grid's first row up into the first grid") {
    EditorConsole test;
    test.plan.ShowTimes(22) = "10:50:00";
    test.plan.ShowTexts(22) = "Row 20";
    test.plan.ShowTimes(23) = "10:55:00";
    test.plan.ShowTexts(23) = "Row 21";
    test.open();
    test.editor.focus(&test.editor.Grid1);
    test.editor.Grid1.select(20, 2);
    test.editor.DeleteRow.on_click();
    CHECK(test.cell(1, 20, 1) == "10:55:00");
    CHECK(test.cell(1, 20, 2) == "Row 21");
    CHECK(test.cell(2, 1, 0) == "10:55:00");
    CHECK(test.cell(2, 1, 1) == "");
    CHECK(test.editor.Grid1.row == 20);
    CHECK(test.editor.Grid1.col == 2);
    CHECK(test.plan.ShowTexts(22).trimmed() == "Row 21");
  }

  TEST_CASE("a row put in at the end of the first grid moves the second one") {
    EditorConsole test;
    test.plan.ShowTimes(22) = "10:50:00";
    test.plan.ShowTimes(42) = "10:59:00";
    test.open();
    test.editor.focus(&test.editor.Grid1);
    test.editor.Grid1.select(20, 1);
    test.editor.InsertRow.on_click();
    CHECK(test.cell(1, 20, 1) == "");
    CHECK(test.cell(2, 1, 1) == "10:50:00");
    CHECK(test.cell(2, 20, 1) == "");
  }

  TEST_CASE("row commands change the plan at once, and leaving without a save undoes them") {
    EditorConsole test;
    const ShowPlan before = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}, {"10:20:00", "B"}});
    test.plan = before;
    const auto& close_by = {std::function<void()>([&] { test.editor.CancelOption.on_click(); }),
                            std::function<void()>([&] { test.editor.Bye.on_click(); }),
                            std::function<void()>([&] { test.editor.close(); })};
    for (const auto& close : close_by) {
      test.open();
      test.editor.focus(&test.editor.Grid1);
      test.editor.Grid1.select(1, 1);
      test.editor.DeleteRow.on_click();
      CHECK(test.plan.ShowTimes(3).trimmed() == "10:20:00");
      test.editor.InsertRow.on_click();
      test.editor.InsertRow.on_click();
      CHECK(test.plan.ShowTimes(5).trimmed() == "10:20:00");
      close();
      CHECK(test.plan == before);
      test.open();
      CHECK(test.cell(1, 1, 2) == "A");
      test.editor.close();
    }
  }

  TEST_CASE("a cancel goes back to what was saved last") {
    EditorConsole test;
    test.plan = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}, {"10:20:00", "B"}});
    test.open();
    test.editor.focus(&test.editor.Grid1);
    test.editor.DeleteRow.on_click();
    test.editor.SaveOption.on_click();
    const ShowPlan saved = test.plan;
    CHECK(saved.ShowTimes(3).trimmed() == "10:20:00");
    test.editor.DeleteRow.on_click();
    test.editor.CancelOption.on_click();
    CHECK(test.plan == saved);
    CHECK(test.platform.files.read("NoName.txt") == encode_show_plan(saved));
  }

  TEST_CASE("row commands keep what is typed and not yet saved") {
    EditorConsole test;
    const ShowPlan before = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}});
    test.plan = before;
    test.open();
    test.editor.StartTime.text = "10:05:00";
    test.type(test.editor.Text1, "\b\b3");
    test.editor.focus(&test.editor.Grid1);
    test.editor.Grid1.set_cell(2, 1, "10:20:00");
    test.editor.Grid1.set_cell(2, 2, "Typed");
    test.editor.Grid2.set_cell(20, 2, "Far");
    test.editor.Grid1.select(1, 1);
    test.editor.InsertRow.on_click();
    CHECK(test.cell(1, 1, 1) == "");
    CHECK(test.cell(1, 2, 2) == "A");
    CHECK(test.cell(1, 3, 1) == "10:20:00");
    CHECK(test.cell(1, 3, 2) == "Typed");
    CHECK(test.cell(1, 4, 0) == "10:20:00");
    test.editor.DeleteRow.on_click();
    CHECK(test.cell(1, 2, 2) == "Typed");
    CHECK(test.cell(2, 20, 2) == "");
    CHECK(test.editor.StartTime.text == "10:05:00");
    test.editor.CancelOption.on_click();
    CHECK(test.plan == before);
  }

  TEST_CASE("a save that fails says why and leaves plan and form as they were") {
    EditorConsole test;
    const ShowPlan before = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}});
    test.plan = before;
    test.open();
    test.editor.Grid1.set_cell(2, 1, "10:20:00");
    test.console.show_plan.close();
    test.editor.SaveOption.on_click();
    test.editor.Exit.on_click();
    CHECK(test.messages == std::vector<std::string>(2, "No show data file is open"));
    CHECK(test.plan == before);
    CHECK(test.editor.visible);
    CHECK(test.cell(1, 2, 1) == "10:20:00");
  }

  TEST_CASE("row commands leave the start of the first row alone") {
    EditorConsole test;
    test.open();
    test.editor.StartTime.text = "10:00:00";
    test.editor.focus(&test.editor.Grid1);
    test.editor.InsertRow.on_click();
    CHECK(test.cell(1, 1, 0) == "10:00:00");
  }

  TEST_CASE("row commands need a grid with the focus") {
    EditorConsole test;
    test.plan = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}});
    test.open();
    CHECK_FALSE(test.editor.InsertRow.enabled);
    CHECK_FALSE(test.editor.DeleteRow.enabled);
    test.editor.DeleteRow.on_click();
    CHECK(test.plan.ShowTimes(3).trimmed() == "10:10:00");
    test.editor.focus(&test.editor.Grid2);
    CHECK(test.editor.InsertRow.enabled);
    CHECK(test.editor.DeleteRow.enabled);
    test.editor.focus(&test.editor.StartTime);
    CHECK_FALSE(test.editor.InsertRow.enabled);
    test.editor.DeleteRow.on_click();
    CHECK(test.plan.ShowTimes(3).trimmed() == "10:10:00");
  }

  TEST_CASE("no grid has the focus when the form is shown again") {
    EditorConsole test;
    test.open();
    test.editor.focus(&test.editor.Grid2);
    test.editor.Grid2.select(7, 2);
    test.editor.CancelOption.on_click();
    test.open();
    CHECK_FALSE(test.editor.InsertRow.enabled);
    CHECK(test.editor.Grid2.row == 1);
  }

  TEST_CASE("the header row is no row of the plan") {
    EditorConsole test;
    test.plan = plan_of("10:00:00", "11:00:00", {{"10:10:00", "A"}});
    test.open();
    test.editor.focus(&test.editor.Grid1);
    test.editor.Grid1.select(0, 1);
    test.editor.DeleteRow.on_click();
    CHECK(test.plan.ShowTimes(2).trimmed() == "11:00:00");
  }
}

}  // namespace
}  // namespace lineweir::test
