#pragma once

#include <unistd.h>

#include <utility>

namespace lineweir::platform {

// Owns an open file of the system, or none (-1).
class FileDescriptor {
 public:
  explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
  ~FileDescriptor() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  FileDescriptor(FileDescriptor&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  bool is_open() const { return descriptor_ >= 0; }
  int get() const { return descriptor_; }

  // Closes now, for callers that must know how it went: what was written may fail only here.
  bool close() { return ::close(std::exchange(descriptor_, -1)) == 0; }

 private:
  int descriptor_;
};

}  // namespace lineweir::platform
