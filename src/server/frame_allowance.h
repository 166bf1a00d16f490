#pragma once

#include <cstddef>

#include "base/allowance.h"
#include "platform/event_loop.h"

namespace lineweir::server {

// How many frames a seat may send, and how much in them: far more than a person's hands bring
// about. What they hold goes to every seat of a group, for which no more than the bound of a
// connection may wait.
class FrameAllowance {
 public:
  static constexpr double frames = 1000;
  static constexpr double frames_each_second = 200;
  static constexpr double bytes = 48 * 1024;
  static constexpr double bytes_each_second = 32 * 1024;

  explicit FrameAllowance(platform::Milliseconds now)
      : frames_(frames, frames_each_second, now), bytes_(bytes, bytes_each_second, now) {}

  bool take(std::size_t size, platform::Milliseconds now) {
    return frames_.take(1, now) && bytes_.take(static_cast<double>(size), now);
  }

 private:
  Allowance frames_;
  Allowance bytes_;
};

}  // namespace lineweir::server
