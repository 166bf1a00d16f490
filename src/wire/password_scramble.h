#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lineweir {

// The scrambling of names and passwords. The first character is the key, the seconds of the present
// time plus 60; each further one has the code of a clear character plus the key.

// Nothing where a character's code plus the key passes 255.
std::optional<std::string> pass_encode(std::string_view clear, int seconds);

// The empty text gives the empty text. Nothing where a character's code is below the key.
std::optional<std::string> pass_decode(std::string_view scrambled);

}  // namespace lineweir
