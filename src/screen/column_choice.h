#pragma once

namespace lineweir {

class DisplayOptions;
struct ConsoleState;

// What the user does on DisplayOptionForm about the columns: which are shown, how wide and in
// which order.
class ColumnChoice {
 public:
  ColumnChoice(ConsoleState& state, DisplayOptions& display);

 private:
  void CheckItem_Click(int Index);
  void WidthText_LostFocus(int Index);
  // The entry of List1 at `from` is dragged to `to`, one place at a time: at each step it changes
  // places with the one under the pointer. The rows follow when the form is closed.
  void List1_Drag(int from, int to);

  void take_width(int column);

  ConsoleState& state_;
  DisplayOptions& display_;
};

}  // namespace lineweir
