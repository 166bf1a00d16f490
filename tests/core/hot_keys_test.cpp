#include <doctest/doctest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "support/listen.h"
#include "support/scripted_console.h"

namespace lineweir {
namespace {

constexpr int plain = 0;
constexpr int shift = 1;
constexpr int control = 2;
constexpr int control_and_shift = 3;
constexpr int alt = 4;
constexpr int alt_and_shift = 5;

// A console whose buttons write down that they were pressed, in place of what they do.
class KeyDesk : public test::ScriptedConsole {
 public:
  KeyDesk() : ScriptedConsole("") {
    MainForm& form = console.Lineweir;
    console.layout.set_line_count(lines_of_large_layout);
    for (int line = 0; line < lines_of_large_layout; ++line) {
      form.OnHybrid1(line).visible = true;
      form.OnHybrid2(line).visible = true;
      listen(form.OnHybrid1(line).on_click, [this, line] { note("OnHybrid1", line); });
      listen(form.OnHybrid2(line).on_click, [this, line] { note("OnHybrid2", line); });
    }
    for (Picture* button : {&form.Dial, &form.Drop1, &form.Hold1, &form.Drop2, &form.Hold2,
                            &form.NextButton, &form.NextToConfButton, &form.OptionsButton}) {
      listen(button->on_click, [this, button] { pressed.push_back(button->name()); });
    }
  }

  // The buttons that a key presses.
  std::vector<std::string> after(int key, int shift_state) {
    pressed.clear();
    int code = key;
    console.Lineweir.on_key_down(code, shift_state);
    swallowed = code == 0;
    return pressed;
  }

  std::vector<std::string> pressed;
  bool swallowed = false;

 private:
  void note(const std::string& name, int line) {
    pressed.push_back(name + " " + std::to_string(line));
  }
};

using Pressed = std::vector<std::string>;

int digit_of_row(int row) { return '0' + (row + 1) % 10; }

TEST_CASE("the digits press the row buttons, with shift those of the second ten") {
  KeyDesk desk;
  for (int row = 0; row < 10; ++row) {
    const int key = digit_of_row(row);
    CHECK(desk.after(key, plain) == Pressed{"OnHybrid1 " + std::to_string(row)});
    CHECK(desk.after(key, shift) == Pressed{"OnHybrid1 " + std::to_string(row + 10)});
    CHECK(desk.after(key, control) == Pressed{"OnHybrid2 " + std::to_string(row)});
    CHECK(desk.after(key, control_and_shift) == Pressed{"OnHybrid2 " + std::to_string(row + 10)});
    CHECK(desk.swallowed);
  }
}

TEST_CASE("a row button that is hidden or disabled isn't pressed") {
  KeyDesk desk;
  desk.console.Lineweir.OnHybrid1(2).enabled = false;
  desk.console.Lineweir.OnHybrid2(2).visible = false;
  CHECK(desk.after('3', plain).empty());
  CHECK(desk.after('3', control).empty());
}

TEST_CASE("a row that doesn't exist gives the one message") {
  test::ScriptedConsole desk;
  int key = '1';
  desk.console.Lineweir.on_key_down(key, shift);
  CHECK(desk.console.MyMsgbox.visible);
  CHECK(desk.console.MyMsgbox.Label1.caption ==
        "That command or line is not available at this time!");
}

TEST_CASE("letters press the panel's buttons, with and without shift") {
  struct Row {
    char key;
    const char* talent;
    const char* producer;
  };
  constexpr std::array rows = {
      Row{'I', "Dial", "Dial"},
      Row{'D', "Drop1", "Drop1"},
      Row{'H', "Hold1", "Hold1"},
      Row{'R', "Drop2", "Drop2"},
      Row{'L', "Hold2", ""},
      Row{'N', "NextButton", ""},
      Row{'X', "NextToConfButton", ""},
      Row{'E', "", "NextButton"},
      Row{'A', "", "NextToConfButton"},
      Row{'S', "OptionsButton", "OptionsButton"},
  };
  KeyDesk desk;
  MainForm& form = desk.console.Lineweir;
  for (const bool talent : {true, false}) {
    form.StudioMode.checked = talent;
    form.ScreenerMode.checked = !talent;
    for (const Row& row : rows) {
      CAPTURE(row.key);
      const std::string expected = talent ? row.talent : row.producer;
      const Pressed pressed = expected.empty() ? Pressed{} : Pressed{expected};
      CHECK(desk.after(row.key, plain) == pressed);
      CHECK(desk.after(row.key, shift) == pressed);
      CHECK(desk.after(row.key, control).empty());
      CHECK(desk.after(row.key, alt).empty());
    }
  }
}

TEST_CASE("passive mode silences the letters that act, not the setup key") {
  KeyDesk desk;
  desk.console.Lineweir.PassiveMode.checked = true;
  for (const char key : std::string("IDHRLNXEA")) CHECK(desk.after(key, plain).empty());
  CHECK(desk.after('S', plain) == Pressed{"OptionsButton"});
}

TEST_CASE("while the quick line is open digits and letters go to it") {
  KeyDesk desk;
  desk.console.Lineweir.Text2.visible = true;
  for (const char key : std::string("1290IDHRLNXEAS")) {
    CHECK(desk.after(key, plain).empty());
    CHECK_FALSE(desk.swallowed);
  }
  CHECK(desk.after('1', control) == Pressed{"OnHybrid2 0"});
}

TEST_CASE("Alt with a digit opens the caller data of a row") {
  KeyDesk desk;
  Console& console = desk.console;
  desk.after('1', alt);
  CHECK(console.Form4.visible);
  CHECK(console.Form4.caption == "Caller Data - Line 1");
  CHECK(console.lines.CurrentDataLine == 0);
  desk.after('0', alt);
  CHECK(console.Form4.caption == "Caller Data - Line 10");
  desk.after('1', alt_and_shift);
  CHECK(console.Form4.caption == "Caller Data - Line 11");
  desk.after('0', alt_and_shift);
  CHECK(console.Form4.caption == "Caller Data - Line 20");

  console.Lineweir.OnHybrid1(4).visible = false;
  desk.after('5', alt);
  CHECK(console.Form4.caption == "Caller Data - Line 20");
}

TEST_CASE("the function keys work whatever the shift is") {
  for (const int shift_state : {plain, shift, control, alt}) {
    KeyDesk desk;
    Console& console = desk.console;
    desk.after(113, shift_state);
    CHECK(console.FlashMessA.visible);
    desk.after(114, shift_state);
    CHECK_FALSE(console.DebugForm.visible);
    console.program.DebugMode = true;
    desk.after(114, shift_state);
    CHECK(console.DebugForm.visible);
    desk.after(118, shift_state);
    CHECK(console.LoginForm.visible);
    CHECK(console.LoginForm.ChangeUser);
  }
}

TEST_CASE("F5 gives the window its design size again") {
  KeyDesk desk;
  MainForm& form = desk.console.Lineweir;
  desk.console.layout.set_line_count(lines_of_small_layout);
  form.width = 15000;
  form.height = 11000;
  desk.after(116, plain);
  CHECK(form.width == 9420);
  CHECK(form.height == 7255);
  CHECK(form.visible);
  CHECK_FALSE(desk.console.Standby.visible);
}

TEST_CASE("F6 lays the quick line over the message display") {
  KeyDesk desk;
  MainForm& form = desk.console.Lineweir;
  desk.after(117, plain);
  CHECK(form.Text2.visible);
  CHECK(form.Text2.enabled);
  CHECK(form.Text2.left == form.Text1.left);
  CHECK(form.Text2.width == form.Text1.width);
  CHECK(form.focused() == &form.Text2);

  int escape = 27;
  form.Text2.on_key_press(escape);
  CHECK(escape == 0);
  CHECK_FALSE(form.Text2.visible);

  desk.console.program.MessagesAllowed = false;
  desk.after(117, plain);
  CHECK_FALSE(form.Text2.visible);
}

TEST_CASE("other keys are left to the controls") {
  KeyDesk desk;
  for (const int key : {int{'Q'}, 13, 27, 112, 115, 999, -1}) {
    CHECK(desk.after(key, plain).empty());
    CHECK_FALSE(desk.swallowed);
  }
  CHECK(desk.after('1', 99).empty());
}

}  // namespace
}  // namespace lineweir
