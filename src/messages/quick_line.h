#pragma once

namespace lineweir {

struct ConsoleState;
class Control;

// Text2 of the main form: the line in which a message is typed while the show runs.
class QuickLine {
 public:
  explicit QuickLine(ConsoleState& state);

  // Lays the line over the message display and gives it the focus.
  void open();

 private:
  void Text2_KeyPress(int& key);
  void Text2_LostFocus();
  void Text1_KeyPress(int& key);
  void Text1_DblClick();

  void close();
  // Gives the focus back to what had it before the line was opened.
  void give_focus_back();

  ConsoleState& state_;
  const Control* former_ = nullptr;
};

}  // namespace lineweir
