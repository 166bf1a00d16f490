#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "clocks/clock_fixture.h"

namespace lineweir::test {

// A console whose plan is empty, and its editor.
class EditorConsole : public ClockConsole {
 public:
  EditorConsole() : ClockConsole("D") {
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.trace.on_line = [this](const std::string& line) { trace.push_back(line); };
  }

  void open() { form.ShowData.on_click(); }

  Grid& grid(int number) { return number == 1 ? editor.Grid1 : editor.Grid2; }
  const std::string& cell(int number, int row, int col) { return grid(number).cell(row, col); }

  // Keys in a box or grid that has the focus; each of them is swallowed.
  void type(Control& control, std::string_view keys) {
    editor.focus(&control);
    for (const char c : keys) press(control, static_cast<unsigned char>(c));
  }
  static void press(Control& control, int key) { control.on_key_press(key); }

  platform::FileQuestion last_question() {
    return std::get<platform::FileQuestion>(platform.dialogs.take_asked().back());
  }

  ShowDataForm& editor = console.Form2;
  std::vector<std::string> messages;
  std::vector<std::string> trace;
};

}  // namespace lineweir::test
