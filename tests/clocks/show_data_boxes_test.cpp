#include <doctest/doctest.h>

#include "clocks/editor_fixture.h"

namespace lineweir::test {
namespace {

const std::string show_ends_early =
    "The Show End Time must be later than the Show Start Time.\r\n"
    "           Please make sure you are using a 24 hour clock!\r\n"
    "                           I.E. 1:00 PM = 13:00:00";

TEST_SUITE("clocks/show data boxes") {
  TEST_CASE("the boxes take times only, and the caret follows") {
    EditorConsole test;
    test.open();
    test.type(test.editor.StartTime, "a24x3106\r095");
    CHECK(test.editor.StartTime.text == "23:10:09");
    CHECK(test.editor.StartTime.sel_start == 8);
    test.type(test.editor.Text1, "x235959");
    CHECK(test.editor.Text1.text == "23:59:59");
    int key = 'q';
    test.editor.StartTime.on_key_press(key);
    CHECK(key == 0);
  }

  TEST_CASE("Tab is left to the window, which moves the focus by it") {
    EditorConsole test;
    test.open();
    for (TextBox* box : {&test.editor.StartTime, &test.editor.Text1}) {
      int key = '\t';
      box->on_key_press(key);
      CHECK(key == '\t');
      CHECK(box->text == "");
    }
  }

  TEST_CASE("an x in Show Start makes Show End hourly too") {
    EditorConsole test;
    test.plan = plan_of("", "11:30:00");
    test.open();
    test.type(test.editor.StartTime, "X15");
    CHECK(test.editor.StartTime.text == "xx:15:");
    CHECK(test.editor.Text1.text == "xx:30:00");
  }

  TEST_CASE("an x reaches Show End only where it has more than three characters") {
    EditorConsole test;
    test.open();
    test.editor.Text1.text = "11:";
    test.type(test.editor.StartTime, "x");
    CHECK(test.editor.Text1.text == "11:");
  }

  TEST_CASE("Show End becomes hourly when it gets the focus behind an hourly start") {
    EditorConsole test;
    test.open();
    test.editor.StartTime.text = "xx:10:00";
    test.editor.focus(&test.editor.Text1);
    CHECK(test.editor.Text1.text == "xx:");
    test.editor.focus(&test.editor.StartTime);
    test.editor.Text1.text = "11:30:00";
    test.editor.focus(&test.editor.Text1);
    CHECK(test.editor.Text1.text == "xx:30:00");
    test.editor.focus(nullptr);
    test.editor.Text1.text = "1";
    test.editor.focus(&test.editor.Text1);
    CHECK(test.editor.Text1.text == "xx:");
  }

  TEST_CASE("backspace leaves the xx: of Show End but not that of Show Start") {
    EditorConsole test;
    test.open();
    test.type(test.editor.StartTime, "x");
    test.type(test.editor.Text1, "15\b\b\b\b");
    CHECK(test.editor.Text1.text == "xx:");
    test.type(test.editor.StartTime, "\b");
    CHECK(test.editor.StartTime.text == "x");
    test.type(test.editor.StartTime, "\b");
    CHECK(test.editor.StartTime.text == "");
  }

  TEST_CASE("Show Start leaves its time in the first row") {
    EditorConsole test;
    test.open();
    test.type(test.editor.StartTime, "100000");
    CHECK(test.cell(1, 1, 0) == "");
    test.editor.focus(&test.editor.Text1);
    CHECK(test.cell(1, 1, 0) == "10:00:00");
  }

  TEST_CASE("a Show End before Show Start is emptied with a message of three lines") {
    EditorConsole test;
    test.open();
    test.type(test.editor.StartTime, "130000");
    test.type(test.editor.Text1, "125959");
    test.editor.focus(&test.editor.Exit);
    CHECK(test.editor.Text1.text == "");
    CHECK(test.messages == std::vector<std::string>{show_ends_early});
    CHECK(test.console.MyMsgbox.left == test.form.left + 2000);
    CHECK(test.console.MyMsgbox.top == test.form.top + 1000);
  }

  TEST_CASE("equal times pass, in spite of the wording") {
    EditorConsole test;
    test.open();
    test.type(test.editor.StartTime, "130000");
    test.type(test.editor.Text1, "130000");
    test.editor.focus(nullptr);
    CHECK(test.editor.Text1.text == "13:00:00");
    CHECK(test.messages.empty());
  }

  TEST_CASE("hourly times are compared within the hour") {
    EditorConsole test;
    test.open();
    test.editor.StartTime.text = "xx:10:00";
    test.type(test.editor.Text1, "0500");
    test.editor.focus(nullptr);
    CHECK(test.editor.Text1.text == "");
    CHECK(test.messages.size() == 1);
  }

  TEST_CASE("times of three characters or fewer aren't compared") {
    EditorConsole test;
    test.open();
    test.editor.StartTime.text = "13:";
    test.type(test.editor.Text1, "120000");
    test.editor.focus(nullptr);
    CHECK(test.editor.Text1.text == "12:00:00");
    test.editor.StartTime.text = "13:00:00";
    test.editor.Text1.text = "12:";
    test.editor.focus(&test.editor.Text1);
    test.editor.focus(nullptr);
    CHECK(test.editor.Text1.text == "12:");
    CHECK(test.messages.empty());
  }

  TEST_CASE("a begun time is reported in the trace") {
    EditorConsole test;
    test.open();
    test.editor.StartTime.text = "13:00:00";
    test.type(test.editor.Text1, "143");
    test.editor.focus(nullptr);
    CHECK(test.editor.Text1.text == "14:3");
    CHECK(test.trace == std::vector<std::string>{"Form2_Text1_LostFocus Error - Type mismatch"});
  }
}

}  // namespace
}  // namespace lineweir::test
