#pragma once

#include <string>

namespace lineweir {

class LineEvents;
class LinkWatch;
class Modes;
class HeldObjects;
class SerialPortControl;
struct ConsoleState;

// The session over remote objects: how it begins.
class RemoteSession {
 public:
  RemoteSession(ConsoleState& state, HeldObjects& objects, Modes& modes, LineEvents& line_events,
                SerialPortControl& port, LinkWatch& link);

  // Whether the server holds a reference to this console.
  bool connected() const;

 private:
  void NetworkConnectionOption_Click();

  void take_studio_state();
  void name_lines(const std::string& numbers);

  ConsoleState& state_;
  HeldObjects& objects_;
  Modes& modes_;
  LineEvents& line_events_;
  SerialPortControl& port_;
  LinkWatch& link_;
};

}  // namespace lineweir
