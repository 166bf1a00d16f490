#pragma once

#include <string>
#include <string_view>

namespace lineweir {

// The names of a group's lines come in one text, ten characters a line.
inline constexpr std::size_t line_name_length = 10;

// FindLongestName: the longest name of such a text, without the blanks around it; the first of
// several. A text of less than ten characters comes back unchanged.
std::string FindLongestName(std::string_view TheOldName);

}  // namespace lineweir
