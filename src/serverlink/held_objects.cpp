#include "serverlink/held_objects.h"

#include "base/failure.h"

namespace lineweir {

void HeldObjects::release() {
  connected = false;
  SerialInputObject.reset();
  CallbackServer.reset();
}

platform::RemoteObject& HeldObjects::serial_input() const {
  if (!SerialInputObject) {
    throw Failure(failure_number::object_not_set, "The remote objects are not connected");
  }
  return *SerialInputObject;
}

bool is_true(const platform::RemoteValue& value) {
  const bool* flag = std::get_if<bool>(&value);
  return flag != nullptr && *flag;
}

}  // namespace lineweir
