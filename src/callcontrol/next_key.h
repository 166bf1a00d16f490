#pragma once

namespace lineweir {

class PhoneCommands;
struct ConsoleState;

// Remote next: the next key of the equipment itself. While it is on, a regular word keeps the
// equipment aware of this console.
class NextKey {
 public:
  NextKey(ConsoleState& state, PhoneCommands& phone);

 private:
  void RemoteNext_Click();
  void RemoteNextTimer_Timer();

  ConsoleState& state_;
  PhoneCommands& phone_;
};

}  // namespace lineweir
