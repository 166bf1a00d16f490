#pragma once

#include <sdbus-c++/IConnection.h>
#include <sdbus-c++/IObject.h>
#include <sdbus-c++/IProxy.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/sdbus/remote_members.h"

namespace lineweir::platform {

enum class RemoteBus { Session, System };

// A connection to the bus with the published objects and the server's name on it. The library waits
// for the bus while this is made, so that it is made on a thread of its own; from then on all is
// done on the loop, and nothing waits.
class BusSession {
 public:
  static constexpr const char* name = "quorlink.Server";

  // What fails is a sdbus::Error.
  explicit BusSession(RemoteBus bus);

  // Set before the first process().
  std::function<void(const RemoteMember& member, sdbus::MethodCall call)> on_call;
  // A name has no owner any more.
  std::function<void(const std::string& left)> on_left;
  // The server's name is another's.
  std::function<void()> on_name_lost;

  // Handles one message that waits, and tells whether there was one. A bus that has gone is a
  // sdbus::Error.
  bool process() { return connection_->processPendingRequest(); }

  sdbus::IConnection::PollData poll_data() const { return connection_->getEventLoopPollData(); }

  std::unique_ptr<sdbus::IProxy> object_of(const std::string& caller, const std::string& path) {
    return sdbus::createProxy(*connection_, caller, path);
  }

 private:
  void publish();
  void listen();

  std::unique_ptr<sdbus::IConnection> connection_;
  std::vector<std::unique_ptr<sdbus::IObject>> objects_;
};

}  // namespace lineweir::platform
