#pragma once

#include <optional>

#include "platform/event_loop.h"

namespace lineweir {

class LinkWatch;
class RemoteObjectsLink;
class RemoteSession;
struct ConsoleState;

// Notices that the program behind the remote objects doesn't answer any more. Then the window says
// so and its keys are locked, as nobody knows what the lines do; as soon as the program answers the
// console begins its session anew and takes over the state of the studio.
class RemoteWatch {
 public:
  RemoteWatch(ConsoleState& state, RemoteObjectsLink& remote_link, RemoteSession& session,
              LinkWatch& link);
  ~RemoteWatch();

  static constexpr platform::Milliseconds between_tries{2000};

 private:
  void presence_changed(bool answers);
  void lose();
  void come_back();
  void try_soon();
  void reconnect();

  ConsoleState& state_;
  RemoteObjectsLink& remote_link_;
  RemoteSession& session_;
  LinkWatch& link_;
  bool answers_ = true;
  std::optional<platform::EventLoop::CallId> next_try_;
};

}  // namespace lineweir
