#pragma once

namespace lineweir {

struct Console;

// Whether the workstation's clock follows the server's.
class TimeSync {
 public:
  explicit TimeSync(Console& console);

  void SyncTimeMenu_Click();

 private:
  Console& console_;
};

}  // namespace lineweir
