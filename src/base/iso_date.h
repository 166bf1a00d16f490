#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/date_time.h"

namespace lineweir {

// Dates as programs tell them to one another, in an order that can be sorted: "2026-12-31", and
// "2026-12-31 20:15" with the time of day.

// Nothing for what isn't exactly that, or no day of the calendar.
std::optional<platform::DateTime> iso_date_of(std::string_view text);
std::optional<platform::DateTime> iso_minute_of(std::string_view text);

std::string iso_date_text(const platform::DateTime& moment);
std::string iso_minute_text(const platform::DateTime& moment);

}  // namespace lineweir
