#pragma once

#include <string>
#include <string_view>

namespace lineweir {

// The text with "0" in front up to the width; one that is as long or longer comes back unchanged.
std::string TextWrit_ZeroFill(std::string_view text, int width);

// The two bytes of a length on the wire, the high byte first. What 16 signed bits don't hold is a
// Failure of number 6.
std::string TextWrit_SizeEncode(int value);

// The text without the characters of code 0 at its beginning and its end.
std::string_view TextWrit_NullRemove(std::string_view text);

}  // namespace lineweir
