#pragma once

#include <memory>

#include "platform/remote_objects.h"

namespace lineweir {

// The two objects of the server that the console holds while it works over remote objects.
class RemoteLink {
 public:
  // Commands and queries.
  std::unique_ptr<platform::RemoteObject> SerialInputObject;
  // Registration of clients.
  std::unique_ptr<platform::RemoteObject> CallbackServer;

  // SerialInputObject; a Failure of number 91 while the console holds none.
  platform::RemoteObject& serial_input() const;
};

}  // namespace lineweir
