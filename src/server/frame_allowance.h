#pragma once

#include <algorithm>

#include "platform/event_loop.h"

namespace lineweir::server {

// So much at once, and so much a second in the long run.
class Allowance {
 public:
  constexpr Allowance(double burst, double each_second, platform::Milliseconds now)
      : burst_(burst), each_second_(each_second), left_(burst), counted_at_(now) {}

  bool take(double amount, platform::Milliseconds now) {
    const double seconds = std::chrono::duration<double>(now - counted_at_).count();
    counted_at_ = now;
    left_ = std::min(burst_, left_ + seconds * each_second_);
    if (left_ < amount) return false;
    left_ -= amount;
    return true;
  }

 private:
  double burst_;
  double each_second_;
  double left_;
  platform::Milliseconds counted_at_;
};

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
