#pragma once

namespace lineweir {

struct ConsoleState;

// Whether the workstation's clock follows the server's.
class TimeSync {
 public:
  explicit TimeSync(ConsoleState& state);

  void SyncTimeMenu_Click();

 private:
  ConsoleState& state_;
};

}  // namespace lineweir
