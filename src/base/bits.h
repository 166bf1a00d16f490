#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lineweir {

// Whether a bit of the character's code is set. Bit 1 is the least significant, bit 8 the most;
// nothing for any other number.
std::optional<bool> get_bit(char byte, int bit_number);

// The code as eight characters "0" and "1", the most significant first.
std::string byte_to_bits(char byte);

// The inverse of byte_to_bits. Each character counts by its numeric value, one that is no digit
// counts 0; characters behind the eighth are passed over. A sum beyond 255 is nothing.
std::optional<char> bits_to_byte(std::string_view bits);

// Flags as the profile holds them.
constexpr std::string_view return_byte(bool flag) { return flag ? "1" : "0"; }
constexpr bool num_to_bool(std::string_view text) { return text == "1"; }

}  // namespace lineweir
