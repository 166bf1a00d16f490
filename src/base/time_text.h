#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/date_time.h"

namespace lineweir {

// Times are texts, and all arithmetic on them uses the time of day alone, in whole seconds from
// midnight, so that nothing accounts for midnight. Date and time texts are those of the United
// States.

inline constexpr int seconds_per_day = 24 * 60 * 60;

int seconds_of_day(const platform::DateTime& moment);

// The time of day that a text stands for, in seconds from midnight: hours, minutes and seconds
// with any number of leading zeros, "AM" or "PM" behind, blanks around, a date "m/d/yyyy" in front.
// Nothing for an empty text or one that is no time.
std::optional<int> time_of_day(std::string_view text);

// "hh:mm:ss" of a difference: its absolute value, wrapped at 24 hours.
std::string hms_text(int seconds);

// The same with an hour that has no leading zero: "h:mm:ss".
std::string short_hms_text(int seconds);

// "hh:mm:ss AM" or "hh:mm:ss PM" of a time of day.
std::string clock_text(int seconds);

// "m/d/yyyy", and "m/d/yyyy h:mm:ss AM/PM".
std::string date_text(const platform::DateTime& moment);
std::string date_time_text(const platform::DateTime& moment);
// "m/d/yyyy h:mm AM/PM".
std::string minute_text(const platform::DateTime& moment);

// The time from the time of day in `since` to `now`, as hms_text. A text that is no time is a
// Failure of number 13.
std::string time_since(std::string_view since, const platform::DateTime& now);

// The date in front of such a text or alone, at midnight. Nothing for one that isn't there or is no
// day of the calendar.
std::optional<platform::DateTime> date_of(std::string_view text);

// The moment of a date, and a time of day in seconds from midnight.
platform::DateTime at_time_of_day(platform::DateTime date, int seconds);

// The whole seconds from one moment to another, negative where that was before.
long long seconds_between(const platform::DateTime& from, const platform::DateTime& to);

// As time_of_day, where a text that is no time is a Failure of number 13.
int required_time_of_day(std::string_view text);

}  // namespace lineweir
