#pragma once

#include <functional>

namespace lineweir::platform {

// Waits for one descriptor of the system that a library reads and writes by itself.
class DescriptorWatch {
 public:
  virtual ~DescriptorWatch() = default;

  // Runs `ready` once, from the loop, as soon as the descriptor can be read, can be written if that
  // is asked too, or has failed. Takes the place of the wait before. The descriptor stays the
  // library's, which closes it behind stop().
  virtual void wait(int descriptor, bool to_write_too, std::function<void()> ready) = 0;

  // Nothing runs any more.
  virtual void stop() = 0;
};

}  // namespace lineweir::platform
