#pragma once

#include <string_view>

namespace lineweir {

class LinkWatch;
class Links;
class HeldObjects;
class RemoteStudio;
class SerialPortControl;
struct ConsoleState;

// The session over remote objects: how it begins, and how it goes on in another studio group.
class RemoteSession {
 public:
  RemoteSession(ConsoleState& state, const Links& links, HeldObjects& objects, RemoteStudio& studio,
                SerialPortControl& port, LinkWatch& link);

  // With the new group's number. Returns whether the server holds a reference to this console
  // there; where not, the user is told and the session has ended.
  bool enter_group();

 private:
  void NetworkConnectionOption_Click();

  // Gives the server a reference to this console; returns whether it holds one.
  bool register_console();
  void end();

  ConsoleState& state_;
  const Links& links_;
  HeldObjects& objects_;
  RemoteStudio& studio_;
  SerialPortControl& port_;
  LinkWatch& link_;
};

}  // namespace lineweir
