#pragma once

#include <cstdint>

#include "base/failure.h"

namespace lineweir {

// Numbers that the system holds in 16 signed bits pass through here: what doesn't fit is a Failure
// of number 6.
inline std::int16_t integer16(long long value) {
  if (value < INT16_MIN || value > INT16_MAX) throw Failure(failure_number::overflow, "Overflow");
  return static_cast<std::int16_t>(value);
}

}  // namespace lineweir
