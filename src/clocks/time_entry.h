#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "elements/key_characters.h"

namespace lineweir {

inline constexpr int backspace_key = 8;

// One thing that may be typed into a text of time.
struct TimeEntryRule {
  // Where the text has this length, and its first character is one of these (any, where none are
  // told) ...
  std::size_t length;
  std::string_view first_characters;
  // ... one of these keys is entered ...
  std::string_view keys;
  // ... with this behind it, or else makes the whole text this.
  std::string_view behind;
  std::string_view whole;
};

inline constexpr std::string_view any_digit = "0123456789";
inline constexpr std::string_view hourly_prefix = "xx:";

// What is typed into the times of a show, on the 24-hour clock, or with "xx:" for the hours in a
// show that runs every hour.
inline constexpr std::array show_time_entry = {
    TimeEntryRule{0, "", "012", "", ""},        TimeEntryRule{0, "", "xX", "", hourly_prefix},
    TimeEntryRule{1, "01", any_digit, ":", ""}, TimeEntryRule{1, "2", "0123", ":", ""},
    TimeEntryRule{3, "", "012345", "", ""},     TimeEntryRule{4, "", any_digit, ":", ""},
    TimeEntryRule{6, "", "012345", "", ""},     TimeEntryRule{7, "", any_digit, "", ""},
};

// What is typed for the computer's clock, on the 12-hour clock.
inline constexpr std::array clock_time_entry = {
    TimeEntryRule{0, "", "01", "", ""},       TimeEntryRule{1, "0", any_digit, ":", ""},
    TimeEntryRule{1, "1", "012", ":", ""},    TimeEntryRule{3, "", "012345", "", ""},
    TimeEntryRule{4, "", any_digit, ":", ""}, TimeEntryRule{6, "", "012345", "", ""},
    TimeEntryRule{7, "", any_digit, "", ""},
};

inline constexpr std::size_t full_time_length = 8;

// What the text becomes by a key; nothing where the key isn't accepted. Backspace takes off the
// colon together with the digit in front of it.
std::optional<std::string> typed_time(std::span<const TimeEntryRule> rules, std::string_view text,
                                      int key);

}  // namespace lineweir
