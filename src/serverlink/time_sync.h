#pragma once

namespace lineweir {

struct ConsoleState;

// Whether the workstation's clock follows the server's.
class TimeSync {
 public:
  explicit TimeSync(ConsoleState& state);

 private:
  void SyncTimeMenu_Click();

  ConsoleState& state_;
};

}  // namespace lineweir
