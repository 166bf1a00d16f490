#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lineweir {

// What the user answered where a number was asked for, possibly cancelled: nothing unless the whole
// answer, blanks aside, is a decimal number.
std::optional<double> number_reply(const std::optional<std::string>& reply);

// The number that the text begins with, blanks in front passed over, as far as it goes, without its
// fraction; 0 where there is none.
double whole_number_in(std::string_view text);

// The nearest whole number, the even one of two; a Failure of number 6 where it doesn't fit into 16
// bits.
int whole_16_bits(double number);

}  // namespace lineweir
