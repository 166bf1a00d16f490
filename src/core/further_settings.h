#pragma once

#include <string>
#include <string_view>

namespace lineweir {

struct ConsoleState;

// What further_settings_file holds: a line "NAME=VALUE" for each choice that the settings' record
// has no room for. What isn't there is as at a first start, and lines that this program doesn't
// know stay.

// Takes the choices over from such a text.
void apply_further_settings(ConsoleState& state, std::string_view text);

// The text with the present choices in place of those that it has.
std::string with_further_settings(const ConsoleState& state, std::string_view text);

}  // namespace lineweir
