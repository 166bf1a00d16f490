#include "callcontrol/line_actions.h"

#include <doctest/doctest.h>

#include <array>
#include <string>
#include <vector>

#include "forms/columns.h"
#include "support/scripted_console.h"

namespace lineweir::test {
namespace {

using Words = std::vector<std::string>;

struct SerialDesk : ScriptedConsole {
  explicit SerialDesk(std::string_view command_line = {}) : ScriptedConsole(command_line) {
    platform.comm1.open();
  }

  Words words() { return platform.comm1.take_writes(); }
  void letters(const std::string& text) {
    for (std::size_t line = 0; line < text.size(); ++line) {
      console.lines.StatusLetter(static_cast<int>(line)) = text[line];
    }
  }
  void produce(int handset, int kind = 1) {
    console.lines.ThePhoneFlag = kind;
    console.Lineweir.MitelPhone1.checked = handset == 1;
    console.Lineweir.MitelPhone2.checked = handset == 2;
    console.Lineweir.ScreenerMode.on_click();
  }
};

TEST_SUITE("callcontrol/line_actions: whether a press finds work") {
  TEST_CASE("talent: on every line that isn't taken by other equipment") {
    SerialDesk desk;
    const MainForm& form = desk.console.Lineweir;
    desk.letters("E N");
    const LineActions& actions = desk.console.line_actions;
    for (const ControlArray<Picture>* buttons : {&form.OnHybrid1, &form.OnHybrid2}) {
      CHECK_FALSE(actions.finds_work((*buttons)(0)));
      CHECK(actions.finds_work((*buttons)(1)));
      CHECK(actions.finds_work((*buttons)(2)));
    }
  }

  TEST_CASE("producer without a handset: where the form opens, and where the next call is chosen") {
    SerialDesk desk;
    MainForm& form = desk.console.Lineweir;
    desk.produce(0, 2);
    desk.letters("RS");
    const LineActions& actions = desk.console.line_actions;
    for (const bool opens_by_itself : {false, true}) {
      form.AutoDataEntry.checked = opens_by_itself;
      CHECK(actions.finds_work(form.OnHybrid1(0)) == opens_by_itself);
      CHECK_FALSE(actions.finds_work(form.OnHybrid1(1)));
      CHECK(actions.finds_work(form.OnHybrid2(1)));
    }
    desk.produce(1, 2);
    CHECK(actions.finds_work(form.OnHybrid1(1)));
  }

  TEST_CASE("drop and hold: where one of the lines is there, the first too") {
    SerialDesk desk;
    const MainForm& form = desk.console.Lineweir;
    const LineActions& actions = desk.console.line_actions;
    CHECK_FALSE(actions.finds_work(form.Drop1));
    desk.letters("N");
    CHECK(actions.finds_work(form.Drop1));
    CHECK_FALSE(actions.finds_work(form.Drop2));
    desk.console.lines.ThePhoneFlag = 4;
    CHECK(actions.finds_work(form.Drop2));
  }

  TEST_CASE("between two groups every press finds work, as it says that it comes too early") {
    SerialDesk desk;
    desk.letters("E");
    desk.platform.winsock1.stand_connected();
    desk.console.Lineweir.WinsockMenu.checked = true;
    for (const bool between : {false, true}) {
      desk.console.login.BetweenGroups = between;
      CHECK(desk.console.line_actions.finds_work(desk.console.Lineweir.OnHybrid1(0)) == between);
      CHECK(desk.console.line_actions.finds_work(desk.console.Lineweir.Drop1) == between);
    }
  }
}

TEST_SUITE("callcontrol/line_actions: row buttons") {
  TEST_CASE("talent: one press moves a line from the conference to main, and locks it there") {
    SerialDesk desk;
    MainForm& form = desk.console.Lineweir;
    desk.letters("NC  ");
    form.OnHybrid1(1).on_click();
    CHECK(desk.words() == Words{"N01"});
    form.OnHybrid1(0).on_click();
    CHECK(desk.words() == Words{"L00"});
    form.OnHybrid2(1).on_click();
    CHECK(desk.words() == Words{"L01"});
    form.OnHybrid2(0).on_click();
    CHECK(desk.words() == Words{"C00"});
    desk.console.lines.ThePhoneFlag = 3;
    form.OnHybrid1(0).on_click();
    form.OnHybrid2(1).on_click();
    CHECK(desk.words() == Words{"N00", "C01"});
  }

  TEST_CASE("a row taken by other equipment gets no word, unless the program was started so") {
    for (const bool overridden : {false, true}) {
      SerialDesk desk(overridden ? "E" : "");
      MainForm& form = desk.console.Lineweir;
      desk.letters("E");
      form.OnHybrid1(0).on_click();
      form.OnHybrid2(0).on_click();
      CHECK(desk.words() == (overridden ? Words{"N00", "C00"} : Words{}));
      desk.produce(1, 2);
      form.OnHybrid1(0).on_click();
      CHECK(desk.words() == (overridden ? Words{"P00"} : Words{}));
    }
  }

  TEST_CASE("producer: without a handset there is no word, but the form still opens") {
    SerialDesk desk;
    desk.produce(0, 2);
    desk.letters("  R");
    desk.console.Lineweir.AutoDataEntry.checked = true;
    desk.console.Lineweir.OnHybrid1(2).on_click();
    CHECK(desk.words().empty());
    CHECK(desk.console.Form4.visible);
    CHECK(desk.console.Form4.caption == "Caller Data - Line 3");
    CHECK(desk.console.lines.CurrentDataLine == 2);
  }

  TEST_CASE("the form opens for a ringing line only, in producer mode, with auto data entry") {
    for (const bool producer : {false, true}) {
      for (const bool automatic : {false, true}) {
        for (const char letter : std::string("RHS ")) {
          SerialDesk desk;
          if (producer) desk.produce(1);
          desk.letters(std::string(1, letter));
          desk.console.Lineweir.AutoDataEntry.checked = automatic;
          desk.console.Lineweir.OnHybrid1(0).on_click();
          CHECK(desk.console.Form4.visible == (producer && automatic && letter == 'R'));
          CHECK(desk.words() == Words{producer ? "P00" : "N00"});
        }
      }
    }
  }

  TEST_CASE("a line beyond the rows is a reported failure") {
    SerialDesk desk("D");
    Words trace;
    desk.console.trace.on_line = [&](const std::string& line) { trace.push_back(line); };
    desk.console.Lineweir.OnHybrid1.load(10).on_click();
    desk.console.Lineweir.OnHybrid2.load(11).on_click();
    CHECK(trace == Words{"Lineweir_OnHybrid1_Click Error - Subscript out of range",
                         "Lineweir_OnHybrid2_Click Error - Subscript out of range"});
    CHECK(desk.words().empty());
  }
}

TEST_SUITE("callcontrol/line_actions: drop and hold") {
  TEST_CASE("talent: all lines on the hybrid at once") {
    SerialDesk desk;
    MainForm& form = desk.console.Lineweir;
    desk.letters("NCNCNSHPOE");
    form.Drop1.on_click();
    CHECK(desk.words() == Words{"F00", "F02", "F04"});
    form.Hold1.on_click();
    CHECK(desk.words() == Words{"H00", "H02", "H04"});
    form.Drop2.on_click();
    CHECK(desk.words() == Words{"F01", "F03"});
    form.Hold2.on_click();
    CHECK(desk.words() == Words{"H01", "H03"});
  }

  TEST_CASE("a line whose row button isn't visible is left alone") {
    SerialDesk desk;
    MainForm& form = desk.console.Lineweir;
    desk.letters("NCNC");
    form.OnHybrid1(0).visible = false;
    form.OnHybrid2(3).visible = false;
    form.Drop1.on_click();
    form.Drop2.on_click();
    form.Hold1.on_click();
    form.Hold2.on_click();
    CHECK(desk.words() == Words{"F02", "F01", "H02", "H01"});
  }

  TEST_CASE("producer: only lines at this console's handset, never one on air") {
    SerialDesk desk;
    MainForm& form = desk.console.Lineweir;
    desk.letters("NCPPOOSH");
    desk.produce(1);
    form.Drop1.on_click();
    CHECK(desk.words() == Words{"F02", "F03"});
    form.Drop2.on_click();
    CHECK(desk.words() == Words{"P15"});
    form.Hold2.on_click();
    CHECK(desk.words() == Words{"H01"});
    desk.produce(2);
    form.Hold1.on_click();
    CHECK(desk.words() == Words{"H04", "H05"});
    form.Drop2.on_click();
    CHECK(desk.words() == Words{"O15"});
    desk.produce(0);
    form.Drop1.on_click();
    CHECK(desk.words().empty());
    form.Drop2.on_click();
    CHECK(desk.words() == Words{"O15"});
  }

  TEST_CASE("producer at handset 1 with equipment of kind 3 works on the conference hybrid") {
    SerialDesk desk;
    desk.letters("NCPC");
    desk.produce(1, 3);
    desk.console.Lineweir.Drop1.on_click();
    CHECK(desk.words() == Words{"F01", "F02", "F03"});
    desk.produce(2, 3);
    desk.console.Lineweir.Drop1.on_click();
    CHECK(desk.words().empty());
  }

  TEST_CASE("with equipment of kind 4 one word for the hybrid, whatever the lines") {
    for (const bool producer : {false, true}) {
      SerialDesk desk;
      MainForm& form = desk.console.Lineweir;
      if (producer) desk.produce(1);
      desk.console.lines.ThePhoneFlag = 4;
      desk.letters("NCPO");
      form.Drop1.on_click();
      form.Hold1.on_click();
      form.Drop2.on_click();
      form.Hold2.on_click();
      CHECK(desk.words() == Words{"F00", "H00", "F00", "H00"});
    }
  }

  TEST_CASE("banks go out on the socket") {
    ScriptedConsole desk;
    desk.platform.winsock1.stand_connected();
    desk.console.Lineweir.WinsockMenu.checked = true;
    desk.console.lines.StatusLetter(2) = 'C';
    desk.console.Lineweir.Drop2.on_click();
    const auto writes = desk.platform.winsock1.take_writes();
    REQUIRE(writes.size() == 1);
    // CMD 4, line 2, group 1, AltInfo 66, console 0, bank 1.
    CHECK(writes[0] == std::string("\x04\x04\x04\x02\x01\x42\x00\x01\x00\x01"
                                   "F\xFF\x05\x05",
                                   14));
  }
}

TEST_SUITE("callcontrol/line_actions: clicks on a row's texts") {
  TEST_CASE("a double click on any text presses the main button, or the conference button") {
    SerialDesk desk;
    MainForm& form = desk.console.Lineweir;
    std::vector<Control*> texts = {&form.DataRow(7), &form.DataRowImage(7)};
    for (int column = 0; column < user_column; ++column) {
      texts.push_back(&form.column_labels(column)(7));
    }
    REQUIRE(texts.size() == 14);
    for (Control* text : texts) {
      CAPTURE(text->name());
      form.OnHybrid1(7).enabled = true;
      form.OnHybrid2(7).enabled = true;
      text->on_dbl_click();
      CHECK(desk.words() == Words{"N07"});
      form.OnHybrid1(7).enabled = false;
      text->on_dbl_click();
      CHECK(desk.words() == Words{"C07"});
      form.OnHybrid2(7).enabled = false;
      text->on_dbl_click();
      CHECK(desk.words().empty());
    }
  }

  TEST_CASE("a right click on any text opens the caller's data, whatever the buttons") {
    SerialDesk desk;
    MainForm& form = desk.console.Lineweir;
    form.PassiveMode.on_click();
    for (int column = 0; column < user_column; ++column) {
      CAPTURE(column);
      const int line = column % 10;
      Label& text = form.column_labels(column)(line);
      desk.console.Form4.unload();
      text.on_mouse_up(left_button, 0);
      CHECK_FALSE(desk.console.Form4.visible);
      text.on_mouse_up(right_button, 0);
      CHECK(desk.console.Form4.visible);
      CHECK(desk.console.lines.CurrentDataLine == line);
      CHECK(desk.console.Form4.caption == "Caller Data - Line " + std::to_string(line + 1));
    }
  }

  TEST_CASE("rows loaded later answer too") {
    SerialDesk desk;
    desk.console.layout.set_line_count(20);
    desk.console.layout.RedefineScreen();
    MainForm& form = desk.console.Lineweir;
    form.OnHybrid1(19).on_click();
    form.LineCity(12).on_dbl_click();
    form.CIcon2(10).on_click();
    CHECK(desk.words() == Words{"N19", "N12", "C10"});
    form.LineName(15).on_mouse_up(right_button, 0);
    CHECK(desk.console.lines.CurrentDataLine == 15);
  }
}

}  // namespace
}  // namespace lineweir::test
