#pragma once

#include <random>

#include "platform/random_numbers.h"

namespace lineweir::platform {

// The same sequence each time, on every machine.
class ScriptedRandomNumbers final : public RandomNumbers {
 public:
  double next() override {
    // The bits that a double holds exactly.
    constexpr int spare_bits = 64 - 53;
    constexpr double range = 9007199254740992.0;
    return static_cast<double>(engine_() >> spare_bits) / range;
  }

  void restart() { engine_.seed(seed); }

 private:
  static constexpr std::mt19937_64::result_type seed = 1;

  std::mt19937_64 engine_{seed};
};

}  // namespace lineweir::platform
