#pragma once

namespace lineweir {

struct ConsoleState;

// What the user does in Form3, in which the computer's clock is set.
class SetTime {
 public:
  explicit SetTime(ConsoleState& state);

 private:
  void Command3D1_Click();
  void Text1_KeyPress(int& key);
  void run_on_enter(int& key);

  ConsoleState& state_;
};

}  // namespace lineweir
