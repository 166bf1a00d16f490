#pragma once

namespace lineweir {

class PhoneCommands;
struct ConsoleState;

// Remote next: the next key of the equipment itself. While it is on, a regular word keeps the
// equipment aware of this console.
class NextKey {
 public:
  NextKey(ConsoleState& state, PhoneCommands& phone);

  // It belongs to talent mode with equipment of kind 1 or 3. Taking it away switches it off, and
  // tells the equipment so; silencing it tells nobody.
  void give();
  void take_away();
  void silence();

 private:
  void RemoteNext_Click();
  void RemoteNextTimer_Timer();

  ConsoleState& state_;
  PhoneCommands& phone_;
};

// Whether the equipment has the key and this user may use it; true of a kind that nobody knows.
bool next_key_may_be_used(const ConsoleState& state);

}  // namespace lineweir
