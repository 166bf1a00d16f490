#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/event.h"
#include "base/failure.h"

namespace lineweir::platform {

using RemoteValue = std::variant<std::monostate, bool, std::int64_t, std::string>;

// An object of another program, whose members are called by name; a property that is written is a
// member with the indices first and the value last. All that goes to one program arrives in the
// order in which it went out. What fails is a Failure with the system's description: of number 429
// where the program isn't there, 438 where it has no such member, and 462 where it gives no answer
// and may have done what was asked.
class RemoteObject {
 public:
  virtual ~RemoteObject() = default;

  // The member's result. Waits for it while the loop runs on, for 5 seconds at most.
  virtual RemoteValue call(std::string_view member, const std::vector<RemoteValue>& arguments) = 0;

  // Told from the loop of what came to nothing.
  using Failed = std::function<void(const Failure& failure)>;

  // A member without a result, for whose end nobody waits.
  virtual void tell(std::string_view member, const std::vector<RemoteValue>& arguments,
                    Failed failed) = 0;
};

class RemoteObjects {
 public:
  virtual ~RemoteObjects() = default;

  // A class that isn't there is a Failure of number 429. May let the loop run.
  virtual std::unique_ptr<RemoteObject> create(const std::string& class_name) = 0;

  // The other program calls a method of the console's call-back object. Called from the loop, in
  // the order of the calls.
  Event<void(const std::string& method, const std::vector<RemoteValue>& arguments)> on_callback;

  // While an object of the other program is held: it doesn't answer any more, or answers again.
  // Called from the loop, within three seconds.
  Event<void(bool answers)> on_presence;
};

}  // namespace lineweir::platform
