#pragma once

namespace lineweir {

struct Console;

// Remote next: the next key of the equipment itself. While it is on, a regular word keeps the
// equipment aware of this console.
class RemoteNextControl {
 public:
  explicit RemoteNextControl(Console& console);

  void RemoteNext_Click();
  void RemoteNextTimer_Timer();

 private:
  Console& console_;
};

}  // namespace lineweir
