#pragma once

#include <string>
#include <string_view>

namespace lineweir {

inline constexpr int least_digits_of_number = 4;

// What two texts have in common that stand for one telephone number: its digits, without an
// international 00 in front and without the country code 1 in front of ten. Empty for too few
// digits, and for one digit again and again, as 0000000 where nobody knows the number.
std::string telephone_key(std::string_view number);

}  // namespace lineweir
