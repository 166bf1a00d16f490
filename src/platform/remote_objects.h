#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/event.h"

namespace lineweir::platform {

using RemoteValue = std::variant<std::monostate, bool, std::int64_t, std::string>;

// An object of another program, whose members are called by name. A member that fails raises a
// Failure with the system's description.
class RemoteObject {
 public:
  virtual ~RemoteObject() = default;

  virtual RemoteValue call(std::string_view member, const std::vector<RemoteValue>& arguments) = 0;
  // An indexed property: the indices first, the value last.
  virtual void set_property(std::string_view member, const std::vector<RemoteValue>& indices,
                            const RemoteValue& value) = 0;
};

class RemoteObjects {
 public:
  virtual ~RemoteObjects() = default;

  // A class that isn't there is a Failure of number 429.
  virtual std::unique_ptr<RemoteObject> create(const std::string& class_name) = 0;

  // The other program calls a method of the console's call-back object. Called from the loop.
  Event<void(const std::string& method, const std::vector<RemoteValue>& arguments)> on_callback;
};

}  // namespace lineweir::platform
