#include "base/bits.h"

#include "base/text.h"

namespace lineweir {

std::optional<bool> get_bit(char byte, int bit_number) {
  if (bit_number < 1 || bit_number > 8) return std::nullopt;
  return ((code_of(byte) >> (bit_number - 1)) & 1) != 0;
}

std::string byte_to_bits(char byte) {
  std::string bits;
  for (int weight = 128; weight > 0; weight /= 2) {
    bits += (code_of(byte) & weight) != 0 ? '1' : '0';
  }
  return bits;
}

std::optional<char> bits_to_byte(std::string_view bits) {
  int sum = 0;
  int weight = 128;
  for (const char bit : left_part(bits, 8)) {
    if (bit >= '0' && bit <= '9') sum += (bit - '0') * weight;
    weight /= 2;
  }
  if (sum > 255) return std::nullopt;
  return static_cast<char>(sum);
}

}  // namespace lineweir
