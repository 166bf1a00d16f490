#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir {

struct ConsoleState;

// What further_settings_file holds: a line "NAME=VALUE" for each choice that the settings' record
// has no room for. What isn't there is as at a first start, and lines that this program doesn't
// know stay.

// A longer file is none of these.
inline constexpr std::size_t longest_further_settings = 100'000;

// Takes the choices over from such a text.
void apply_further_settings(ConsoleState& state, std::string_view text);

// The text with the present choices in place of those that it has.
std::string with_further_settings(const ConsoleState& state, std::string_view text);

struct FurtherSetting {
  std::string name;
  std::string value;
};

// The lines that have a name, in their order.
std::vector<FurtherSetting> further_settings_of(std::string_view text);

// The text with that value in the line of that name; without the line where the value is empty.
std::string with_further_setting(std::string_view text, std::string_view name,
                                 std::string_view value);

}  // namespace lineweir
