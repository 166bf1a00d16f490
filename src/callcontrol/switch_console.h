#pragma once

#include "callcontrol/switch_console_keys.h"

namespace lineweir {

class RowDisplay;
struct ConsoleState;
class Picture;

// The switch console on the host's desk, on the second serial port. Its keys press the buttons of
// the screen, and can't do what the screen can't; its lamps repeat the state of the lines.
class SwitchConsole {
 public:
  SwitchConsole(ConsoleState& state, RowDisplay& rows);

 private:
  // Each event of the port; only received data is acted on. The first character is the key.
  void Comm2_OnComm(int comm_event);
  // Sends the lamps of all lines.
  void SwitchConsoleTimer_Timer();

  void press(const SwitchConsoleKey& key);
  void press_next();
  void press_dial_key(int key);

  ConsoleState& state_;
  RowDisplay& rows_;
};

}  // namespace lineweir
