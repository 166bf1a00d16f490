#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/date_time.h"
#include "callerdata/caller_history.h"
#include "wire/caller_known.h"

namespace lineweir {

// What a server remembers of a caller, as the user reads it. Dates are written as everywhere on the
// screen.

// "Barred"; empty for no flag.
std::string_view flag_word(CallerFlag flag);
// Green, amber or red, with red in the low byte.
int flag_color(CallerFlag flag);
// "Barred until 12/31/2026: abuse (anna)"; empty for no flag. And in few words, "Barred: abuse".
std::string flag_text(const CallerKnown& known);
std::string flag_in_short(const CallerKnown& known);
// "On air 3 times, last 11/12/2026", "Called twice, never on air"; empty for a caller who hasn't
// called.
std::string calls_text(const CallerKnown& known);

// "Anna Lee, Troy", or one of both; empty where neither is known.
std::string person_text(const CallerKnown& known);

// The same in the form of what the log knows; nothing where the caller hasn't called.
std::optional<CallerHistory> history_of(const CallerKnown& known);

// A history that has more calls wins; what it doesn't know the other one adds.
std::optional<CallerHistory> richer(const std::optional<CallerHistory>& log,
                                    const CallerKnown* known);

// A flag's last day as the user sees and types it, and on the wire. Beside the screen's own dates
// "2026-12-31" and "31.12.2026" are understood; nothing for what is no date.
std::string shown_day(std::string_view until);
std::optional<platform::DateTime> typed_day(std::string_view text);

}  // namespace lineweir
