#pragma once

#include <optional>

#include "callcontrol/line_commands.h"

namespace lineweir {

struct ConsoleState;

// The word of a row button; nothing for a line that may not be commanded.
std::optional<CommandWord> main_row_word(const ConsoleState& state, int line);
std::optional<CommandWord> conference_row_word(const ConsoleState& state, int line);

}  // namespace lineweir
