#include "serverlink/remote_link.h"

#include "elements/failure.h"

namespace lineweir {

platform::RemoteObject& RemoteLink::serial_input() const {
  if (!SerialInputObject) {
    throw Failure(failure_number::object_not_set, "The remote objects are not connected");
  }
  return *SerialInputObject;
}

}  // namespace lineweir
