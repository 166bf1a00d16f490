#pragma once

#include <string>

#include "platform/disk/file_descriptor.h"

namespace lineweir::platform {

// While it is there no other server works on the store of a file: two would end each other's calls.
// It holds a file beside the store, which stays behind and is free as soon as the process has
// ended, in whatever way.
class StoreFileLock {
 public:
  // A std::runtime_error in one sentence where another server has the store, and where no file can
  // be made beside it.
  explicit StoreFileLock(const std::string& store_file);

 private:
  FileDescriptor file_;
};

}  // namespace lineweir::platform
