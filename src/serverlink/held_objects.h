#pragma once

#include <memory>

#include "platform/remote_objects.h"

namespace lineweir {

// The two objects of the server that the console holds while it works over remote objects.
class HeldObjects {
 public:
  // Commands and queries.
  std::unique_ptr<platform::RemoteObject> SerialInputObject;
  // Registration of clients.
  std::unique_ptr<platform::RemoteObject> CallbackServer;

  // Whether the server holds a reference to this console.
  bool connected = false;

  // Lets all of it go.
  void release();

  // SerialInputObject; a Failure of number 91 while the console holds none.
  platform::RemoteObject& serial_input() const;
};

// Whether a member returned true; any other type is not.
bool is_true(const platform::RemoteValue& value);

}  // namespace lineweir
