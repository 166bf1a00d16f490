#pragma once

#include <cstdint>
#include <random>

#include "exchange/moment.h"

namespace lineweir::exchange {

// Seeded chance. The library's engine gives the same numbers everywhere but its distributions
// don't, so the few that are needed are made here.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}

  double fraction();                 // 0 to just below 1
  bool happens(double probability);  // 0 never, 1 always
  int below(int count);              // 0 to count - 1; count is at least 1
  Moment between(Moment low, Moment high);
  Moment around(Moment mean);       // half to one and a half of it, at least a millisecond
  Moment exponential(Moment mean);  // memoryless, from a millisecond to twenty times the mean

 private:
  std::mt19937_64 engine_;
};

}  // namespace lineweir::exchange
