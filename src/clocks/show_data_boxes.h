#pragma once

namespace lineweir {

struct ConsoleState;

// The boxes of Form2 in which Show Start and Show End are typed. A show is hourly as a whole, so
// that an "x" in one reaches the other.
class ShowDataBoxes {
 public:
  explicit ShowDataBoxes(ConsoleState& state);

 private:
  void StartTime_KeyPress(int& key);
  void StartTime_LostFocus();
  void Text1_KeyPress(int& key);
  void Text1_GotFocus();
  void Text1_LostFocus();

  ConsoleState& state_;
};

}  // namespace lineweir
