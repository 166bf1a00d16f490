#pragma once

#include <string>

#include "platform/random_numbers.h"

namespace lineweir::platform {

// Bytes that nobody can guess. libsodium has to have begun, see begin_sodium().
std::string random_bytes(std::size_t count);

// Numbers that nobody can guess, for passwords.
class SodiumRandomNumbers final : public RandomNumbers {
 public:
  SodiumRandomNumbers();
  double next() override;
};

}  // namespace lineweir::platform
