#include "platform/machine/machine_random_numbers.h"

#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

namespace lineweir::platform {

double MachineRandomNumbers::next() {
  std::uint64_t bits = 0;
  if (::getentropy(&bits, sizeof bits) != 0) {
    throw std::system_error(errno, std::generic_category(), "getentropy");
  }
  // As many as the mantissa holds.
  return static_cast<double>(bits >> 11U) * 0x1.0p-53;
}

}  // namespace lineweir::platform
