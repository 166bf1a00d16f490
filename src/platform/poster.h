#pragma once

#include <functional>

namespace lineweir::platform {

// Hands calls from other threads to the loop, in their order.
class Poster {
 public:
  virtual ~Poster() = default;

  // From any thread; the call runs on the loop, never from within this.
  virtual void post(std::function<void()> call) = 0;
};

}  // namespace lineweir::platform
