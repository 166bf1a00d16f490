#pragma once

#include <functional>

namespace lineweir {

struct ConsoleState;

// The boxes of Form2 in which Show Start and Show End are typed. A show is hourly as a whole, so
// that an "x" in one reaches the other.
class ShowDataBoxes {
 public:
  explicit ShowDataBoxes(ConsoleState& state);

  // Told when a box has another text.
  std::function<void()> on_typed;

 private:
  void StartTime_KeyPress(int& key);
  void StartTime_LostFocus();
  void Text1_KeyPress(int& key);
  void Text1_GotFocus();
  void Text1_LostFocus();
  // Says beside the boxes how the clock will tell their times.
  void show_on_the_clock();

  ConsoleState& state_;
};

}  // namespace lineweir
