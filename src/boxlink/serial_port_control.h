#pragma once

#include <string_view>

namespace lineweir {

struct Console;
class Failure;

// The menu "Port" as far as the serial line goes: which port, open or closed, and the probe that
// wakes the interface box.
class SerialPortControl {
 public:
  explicit SerialPortControl(Console& console);

  // Com1_Click to Com4_Click: moves an open link to another port; on a closed one it only selects.
  void Com_Click(int number);
  void PortOn_Click();
  void Off_Click();

 private:
  // Opens the port and waits for the box; asks for all lines once it has answered. False, with the
  // message shown, when it doesn't answer within 3 seconds: the port stays open.
  bool probe();
  bool await_box();
  void request_all_lines();
  void select(int number);
  // The one handler of the procedures of this class.
  void guard_port(std::string_view procedure, const Failure& failure);

  Console& console_;
};

}  // namespace lineweir
