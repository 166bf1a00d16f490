#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "link/seat_message.h"

namespace lineweir {

inline constexpr std::string_view line_break = "\r\n";

// How long a message, and with it the display, may become: a frame holds 32,767 bytes with the
// colours and the sender's name.
inline constexpr std::size_t longest_message = 30'000;

// What a user has typed or pasted, without the control characters that would end a frame or part
// its items. Tabs and line breaks stay.
std::string sendable(std::string_view typed);

// The same of what is one line, with blanks in place of line breaks.
std::string sendable_line(std::string_view typed);

// What the display shows of a message: its sender, ">" and all behind; all of it where it names no
// sender.
std::string shown_message(std::string_view message);

// The conversation with one more line, "NAME> WORDS", at its end.
std::string with_line(std::string_view conversation, std::string_view name, std::string_view words);

// As many whole lines from the end as fit into the length; the last line whatever its length. Lines
// of other programs may end with one of the two characters alone.
std::string last_lines(std::string_view conversation);

// Who wrote a message, and what of it he wrote: a line may come with the whole conversation before
// it, and the sender's name stands in front of his words.
SeatMessage words_of(std::string_view message);

}  // namespace lineweir
