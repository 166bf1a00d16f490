#pragma once

#include <memory>

#include "letters/letters.h"
#include "platform/event_loop.h"
#include "platform/remote_objects.h"

namespace lineweir::platform {

// Objects of the program that has the name quorlink.Server on the user's bus, or on the system's
// where LINEWEIR_BUS is "system". A class QUORLINK.X is the object /X with the interface
// quorlink.X, and is started by the bus where it may be. The console's own object is
// /CBClientClass with the interface quorlink.CBClientClass; only the owner of the name is heard
// there. The interfaces stand in the folder dbus beside this file.
//
// While an object is held the program is asked each second whether it lives.
class DBusRemoteObjects final : public RemoteObjects {
 public:
  static constexpr Milliseconds answer_limit{5000};

  // A QCoreApplication must exist. Loop and letters outlive this object, and this one all objects
  // that it has created. Nothing is connected until the first is.
  DBusRemoteObjects(EventLoop& loop, const Letters& letters);
  ~DBusRemoteObjects() override;

  std::unique_ptr<RemoteObject> create(const std::string& class_name) override;

 private:
  class Object;
  class Callback;
  class Bus;

  EventLoop& loop_;
  const Letters& letters_;
  // Lives as long as the last wait on it, which may outlast its object.
  std::shared_ptr<Bus> bus_;
};

}  // namespace lineweir::platform
