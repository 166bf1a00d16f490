#pragma once

#include <string>

#include "platform/disk/file_descriptor.h"

namespace lineweir::serverd {

// While it is there no other server works on the store: two would end each other's calls. It holds
// a file beside the store, which stays behind and is free as soon as the process has ended, in
// whatever way.
class StoreLock {
 public:
  // A std::runtime_error in one sentence where another server has the store, and where no file can
  // be made beside it.
  explicit StoreLock(const std::string& store_file);

 private:
  platform::FileDescriptor file_;
};

}  // namespace lineweir::serverd
