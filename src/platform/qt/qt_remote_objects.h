#pragma once

#include "base/failure.h"
#include "platform/remote_objects.h"

namespace lineweir::platform {

// The remote objects of a workstation that has no server of objects: there is no class.
class QtRemoteObjects final : public RemoteObjects {
 public:
  std::unique_ptr<RemoteObject> create(const std::string&) override {
    throw Failure(failure_number::no_such_class, "Cannot find server");
  }
};

}  // namespace lineweir::platform
