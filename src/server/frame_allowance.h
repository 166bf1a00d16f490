#pragma once

#include <algorithm>

#include "platform/event_loop.h"

namespace lineweir::server {

// How many frames a seat may send: a burst, and so many a second in the long run, far more than a
// person's hands bring about.
class FrameAllowance {
 public:
  static constexpr double burst = 1000;
  static constexpr double each_second = 200;

  explicit FrameAllowance(platform::Milliseconds now) : counted_at_(now) {}

  bool take(platform::Milliseconds now) {
    const double seconds = std::chrono::duration<double>(now - counted_at_).count();
    counted_at_ = now;
    left_ = std::min(burst, left_ + seconds * each_second);
    if (left_ < 1) return false;
    left_ -= 1;
    return true;
  }

 private:
  double left_ = burst;
  platform::Milliseconds counted_at_;
};

}  // namespace lineweir::server
