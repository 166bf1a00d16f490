#pragma once

#include <string>
#include <string_view>

namespace lineweir {

struct ConsoleState;

// The text scrambled with the seconds of the present time; empty, and reported, where a character
// can't be scrambled.
std::string TextWrit_PassEncode(ConsoleState& state, std::string_view text);

// The user's name and password as the frames hold them.
std::string credentials(ConsoleState& state);

}  // namespace lineweir
