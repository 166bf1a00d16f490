#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace lineweir {

// What a station has noted of a caller, growing with the care that is due; the values stand on the
// wire and in stores.
enum class CallerFlag : std::uint8_t { None = 0, Regular = 1, Careful = 2, Barred = 3 };

inline constexpr std::string_view caller_flag_names[] = {"none", "regular", "careful", "barred"};
inline constexpr std::uint8_t caller_flag_count = std::size(caller_flag_names);

// Nothing for a value that stands for none.
constexpr std::optional<CallerFlag> caller_flag_of(std::int64_t value) {
  if (value < 0 || value >= caller_flag_count) return std::nullopt;
  return static_cast<CallerFlag>(value);
}

constexpr std::string_view name_of(CallerFlag flag) {
  return caller_flag_names[static_cast<std::size_t>(flag)];
}

// Nothing for a name of none.
constexpr std::optional<CallerFlag> find_caller_flag(std::string_view name) {
  for (std::uint8_t value = 0; value < caller_flag_count; ++value) {
    if (caller_flag_names[value] == name) return static_cast<CallerFlag>(value);
  }
  return std::nullopt;
}

}  // namespace lineweir
