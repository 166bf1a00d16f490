#pragma once

#include <string>
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

  // PortOn_Click as the start runs it: a port that can't be opened makes it try the ports 1 to 4
  // in turn. Failures that aren't the port's pass through.
  void open_at_start();

  // Probes a port that is open already.
  void probe_at_start();

 private:
  // Opens the port and waits for the box; asks for all lines once it has answered. False, with the
  // message shown, when it doesn't answer within 3 seconds: the port stays open.
  enum class Opening { Plain, Searching, AlreadyOpen };
  bool probe(Opening opening);
  bool open(Opening opening);
  bool open_searching();
  bool await_box();
  void request_all_lines();
  void select(int number);
  void show_switch(bool on);
  // An open port has vanished: the user is told, and finds the switch off.
  void port_lost(const std::string& description);
  // The one handler of the procedures of this class.
  void guard_port(std::string_view procedure, const Failure& failure);

  Console& console_;
  // The port failures of the start so far; each selects the next port.
  int failures_at_start_ = 0;
};

}  // namespace lineweir
