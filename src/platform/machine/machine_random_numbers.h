#pragma once

#include "platform/random_numbers.h"

namespace lineweir::platform {

// Numbers that nobody can guess, each from the system's own source.
class MachineRandomNumbers final : public RandomNumbers {
 public:
  // Throws std::system_error where the system has none.
  double next() override;
};

}  // namespace lineweir::platform
