#pragma once

#include <string>

namespace lineweir {

class LineEvents;
class LinkWatch;
class Links;
class Modes;
class HeldObjects;
class SerialPortControl;
struct ConsoleState;

// The session over remote objects: how it begins.
class RemoteSession {
 public:
  RemoteSession(ConsoleState& state, const Links& links, HeldObjects& objects, Modes& modes,
                LineEvents& line_events, SerialPortControl& port, LinkWatch& link);

 private:
  void NetworkConnectionOption_Click();

  void take_studio_state();
  void name_lines(const std::string& numbers);

  ConsoleState& state_;
  const Links& links_;
  HeldObjects& objects_;
  Modes& modes_;
  LineEvents& line_events_;
  SerialPortControl& port_;
  LinkWatch& link_;
};

}  // namespace lineweir
