#pragma once

#include <string>
#include <string_view>

namespace lineweir {

struct ConsoleState;
class Failure;

// The menu "Remote Port": the serial port of the switch console. A port that vanishes while it is
// in use is told once; choosing a port, or switching on, brings it back.
class SwitchConsolePort {
 public:
  explicit SwitchConsolePort(ConsoleState& state);

  // What the settings keep. A failure shows in the menu, but it is no choice of the user's.
  bool wanted() const;

  // Opens the port again after it was closed for a moment.
  void reopen(std::string_view procedure);

 private:
  // RemoteCom1_Click to RemoteCom4_Click.
  void RemoteCom_Click(int number);
  void RemoteOn_Click();
  void RemoteOff_Click();

  void port_lost(const std::string& description);
  void show(const Failure& failure);

  ConsoleState& state_;
  // The user has switched on last, whatever came of it.
  bool switched_on_ = false;
  // The port was open, and closed against the user's will: choosing a port opens it again.
  bool missed_ = false;
};

}  // namespace lineweir
