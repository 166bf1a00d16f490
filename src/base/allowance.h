#pragma once

#include <algorithm>
#include <chrono>

namespace lineweir {

// So much at once, and so much a second in the long run. Moments don't go back.
class Allowance {
 public:
  using Milliseconds = std::chrono::milliseconds;

  constexpr Allowance(double burst, double each_second, Milliseconds now)
      : burst_(burst), each_second_(each_second), left_(burst), counted_at_(now) {}

  // Whether there is so much; then it is taken.
  bool take(double amount, Milliseconds now) {
    count_up_to(now);
    if (left_ < amount) return false;
    left_ -= amount;
    return true;
  }

  bool is_whole(Milliseconds now) {
    count_up_to(now);
    return left_ >= burst_;
  }

  void use_up() { left_ = 0; }

 private:
  void count_up_to(Milliseconds now) {
    const double seconds = std::chrono::duration<double>(now - counted_at_).count();
    counted_at_ = now;
    left_ = std::min(burst_, left_ + seconds * each_second_);
  }

  double burst_;
  double each_second_;
  double left_;
  Milliseconds counted_at_;
};

}  // namespace lineweir
