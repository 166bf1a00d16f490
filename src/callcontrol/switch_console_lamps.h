#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lineweir {

// The message that sets a line's lamps on the switch console: its two cadence bytes and the lamps'
// address. With twenty lines, line n and the line ten above it share their lamps, and a line whose
// row is hidden has no message; nothing then.
std::optional<std::string> lamp_message(int line, bool twenty_lines, bool row_is_visible,
                                        std::string_view cadence);

}  // namespace lineweir
