#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace lineweir::exchange {

// Time since the studio's start. Everything but the program's poll loop is told the time and never
// asks for it.
using Moment = std::chrono::milliseconds;

inline constexpr Moment never = Moment::max();

// Reads "12", "12.5" or "0.125": seconds with up to nine digits before the point and three behind
// it. Nothing else is a time: no sign, no exponent, no blank.
std::optional<Moment> parse_seconds(std::string_view text);

// Seconds with exactly three decimals, as in "12.500".
std::string format_seconds(Moment moment);

}  // namespace lineweir::exchange
