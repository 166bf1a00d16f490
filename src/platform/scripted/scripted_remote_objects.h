#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "platform/remote_objects.h"

namespace lineweir::platform {

// One use of a member. A property write has the value behind the indices.
struct RemoteCall {
  // The class without the name of its program.
  std::string object;
  std::string member;
  std::vector<RemoteValue> arguments;
};

// Objects of another program whose members return what a script says, and nothing until it has.
class ScriptedRemoteObjects final : public RemoteObjects {
 public:
  // The loop outlives the objects.
  explicit ScriptedRemoteObjects(EventLoop& loop) : loop_(loop) {}

  // The object may outlive neither this nor the program that it belongs to: while that is absent,
  // using a member is a Failure of number 429 as well.
  std::unique_ptr<RemoteObject> create(const std::string& class_name) override;

  // Whether the other program is there. At first it isn't.
  void set_present(bool present) { present_ = present; }
  bool present() const { return present_; }
  // The same, and the console is told when the loop next runs what is due.
  void tell_presence(bool answers);
  // What a member returns from now on, whatever its object and arguments.
  void set_result(const std::string& member, const RemoteValue& value);
  // The other program calls the call-back object when the loop next runs what is due.
  void call_back(const std::string& method, const std::vector<RemoteValue>& arguments);

  // Runs while a member is used: the events that a console lets run meanwhile.
  std::function<void(const std::string& member)> on_use;

  // Each use of a member since the last call.
  std::vector<RemoteCall> take_calls();

  // As ScriptedSerialPort::restart.
  void restart() {
    on_callback.forget_handler();
    on_presence.forget_handler();
  }

 private:
  class Object;

  void require_presence() const;
  RemoteValue use(const RemoteCall& call);

  EventLoop& loop_;
  bool present_ = false;
  std::map<std::string, RemoteValue, std::less<>> results_;
  std::vector<RemoteCall> calls_;
};

}  // namespace lineweir::platform
