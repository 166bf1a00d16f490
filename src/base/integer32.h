#pragma once

#include <cstdint>

#include "base/failure.h"

namespace lineweir {

// Numbers that the system holds in 32 signed bits pass through here: what doesn't fit is a Failure
// of number 6.
inline std::int32_t integer32(long long value) {
  if (value < INT32_MIN || value > INT32_MAX) throw Failure(failure_number::overflow, "Overflow");
  return static_cast<std::int32_t>(value);
}

}  // namespace lineweir
