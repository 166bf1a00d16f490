#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir {

// What a server tells of a studio group in one text each. Items end with a char 3; what follows the
// last one is no item.

// Which parts of a studio exist. Items "True" and "False" are, in their order, the two hybrids and
// the two handset positions; any other item is a number and stands for the next line, which exists
// unless it is 0.
struct StudioParts {
  std::vector<bool> parts;
  std::vector<bool> lines;

  friend bool operator==(const StudioParts&, const StudioParts&) = default;
};

// Nothing for "ERROR", which a server without a status for the group sends.
std::optional<StudioParts> decode_studio_parts(std::string_view text);
// The parts in front, then the lines by their numbers, 0 for one that doesn't exist.
std::string encode_studio_parts(const StudioParts& studio);
// What a server answers for a group that it doesn't have.
inline constexpr std::string_view no_studio_status = "ERROR";

// Since when callers wait or talk: an item a line with the time of day at which the line's clock
// began, of one or two characters where none runs; then the server's present time of day.
struct CallTimes {
  std::vector<std::string> began;
  std::string server_now;

  friend bool operator==(const CallTimes&, const CallTimes&) = default;
};

// Nothing for a text without an item.
std::optional<CallTimes> decode_call_times(std::string_view text);
// Of a line without a clock `began` is empty.
std::string encode_call_times(const CallTimes& times);

// An item of these lines has a running clock.
bool clock_runs(std::string_view began);

// A server's date and time: the time of day is the last 11 characters, the date what stands before.
struct ServerTimeText {
  std::string_view date;
  std::string_view time;
};
ServerTimeText split_server_time(std::string_view text);

}  // namespace lineweir
