#pragma once

#include <string_view>

namespace lineweir {

class LinkWatch;
class Links;
class HeldObjects;
class RemoteObjectsLink;
class RemoteStudio;
class SerialPortControl;
struct ConsoleState;

// The session over remote objects: how it begins, and how it goes on in another studio group.
class RemoteSession {
 public:
  RemoteSession(ConsoleState& state, const Links& links, HeldObjects& objects, RemoteStudio& studio,
                SerialPortControl& port, LinkWatch& link, RemoteObjectsLink& remote_link);

  // With the new group's number. Returns whether the server holds a reference to this console
  // there; where not, the user is told, and nothing that happens there comes by itself.
  bool enter_group();

  // Whether it has begun, with all that the server tells, and not ended since.
  bool stands() const { return stands_; }

  // Begins anew with a server that has come back; returns whether that came about. The user is told
  // nothing.
  bool resume();

 private:
  void NetworkConnectionOption_Click();

  // Gets the objects, registers the console and takes the studio over; false where the server
  // doesn't take the console. May let events run, in which all of this may begin anew or end.
  bool begin();
  // Gives the server a reference to this console; returns whether it holds one.
  bool register_console();
  void end();

  ConsoleState& state_;
  const Links& links_;
  HeldObjects& objects_;
  RemoteStudio& studio_;
  SerialPortControl& port_;
  LinkWatch& link_;
  RemoteObjectsLink& remote_link_;
  bool stands_ = false;
  // Tells the beginning that waits for the server from those given up.
  int attempts_ = 0;
};

}  // namespace lineweir
