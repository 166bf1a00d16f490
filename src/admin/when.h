#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lineweir::admin {

// Since the beginning of 1970, UTC.
using Moment = std::chrono::milliseconds;

// A moment as a person types it: a date, 2026-01-31; a date and a time of day, 2026-01-31 18:05 or
// 2026-01-31T18:05:30, by the machine's time zone or, with a Z behind it, by UTC; or how long ago
// it was, 30s, 30m, 2h, 7d or 3w. Nothing for any other text.
std::optional<Moment> parse_when(std::string_view text, Moment now);

// By the machine's time zone, as 2026-01-31 18:05:30; empty for 0, which hasn't come.
std::string local_time(Moment moment);

// As 2026-01-31T17:05:30.250Z.
std::string utc_time(Moment moment);

}  // namespace lineweir::admin
