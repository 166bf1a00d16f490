#include "platform/sodium/sodium_random_numbers.h"

#include <sodium/randombytes.h>

#include <cstdint>

#include "platform/sodium/argon2id.h"

namespace lineweir::platform {

std::string random_bytes(std::size_t count) {
  std::string bytes(count, '\0');
  randombytes_buf(bytes.data(), bytes.size());
  return bytes;
}

SodiumRandomNumbers::SodiumRandomNumbers() { begin_sodium(); }

double SodiumRandomNumbers::next() {
  // The bits that a double holds exactly.
  constexpr int spare_bits = 64 - 53;
  constexpr double range = 9007199254740992.0;
  std::uint64_t bits = 0;
  randombytes_buf(&bits, sizeof bits);
  return static_cast<double>(bits >> spare_bits) / range;
}

}  // namespace lineweir::platform
