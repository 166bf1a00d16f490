#pragma once

#include <string_view>

namespace lineweir {

struct Console;
class Failure;

// The menu "Remote Port": the serial port of the switch console.
class RemotePortControl {
 public:
  explicit RemotePortControl(Console& console);

  // RemoteCom1_Click to RemoteCom4_Click.
  void RemoteCom_Click(int number);
  void RemoteOn_Click();
  void RemoteOff_Click();

 private:
  void report(std::string_view procedure, const Failure& failure);

  Console& console_;
};

}  // namespace lineweir
