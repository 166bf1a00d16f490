#pragma once

#include <string>
#include <string_view>

namespace lineweir {

// Text in the core is bytes of the workstation's single-byte set, one a character: its letters
// (letters/letters.h) make Unicode of it at the edges. A blank is the byte 32; trimming takes
// blanks off and nothing else.
std::string_view trimmed(std::string_view text);
std::string_view trimmed_left(std::string_view text);
std::string_view trimmed_right(std::string_view text);

// At most `length` characters of the beginning, and of the end.
std::string_view left_part(std::string_view text, std::size_t length);
std::string_view right_part(std::string_view text, std::size_t length);

// The byte's code, 0 to 255.
constexpr int code_of(char character) { return static_cast<unsigned char>(character); }

// The decimal text with zeros in front up to the width.
std::string zero_filled(int value, std::size_t width);

constexpr bool is_digit(char character) { return character >= '0' && character <= '9'; }

// The digits of the text alone.
std::string digits_of(std::string_view text);

// The leading number of the text, blanks in front passed over, as far as it goes; 0 where there is
// none. "12x" is 12, "x" is 0.
int leading_number(std::string_view text);

}  // namespace lineweir
