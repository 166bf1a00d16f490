#pragma once

#include <string>
#include <string_view>

namespace lineweir {

struct Console;

// The text in which a server keeps a user's options: 43 flags, each "1" or "0", then fields, each
// ended by a char 3: height, width, group, window state, show data file, database, operator, group
// again, the two warning times, hot list; place, "T" or "F" and width of columns 2 to 12; the
// message font's name and size; the time offset. As the console sends it, the user's name and a
// char 3 stand in front.

inline constexpr int no_group = -1;

// TextWrit_ExtractMessageGroup: the group in a received block, no_group where it isn't there.
int group_of_profile(std::string_view block);

// The block to send. A name that isn't empty becomes the user's.
std::string PrepareUserData(Console& console, std::string_view TheName);

// Gives the block to the server, unless the equipment is of kind 4. A failure of the socket is the
// caller's to handle.
void send_user_profile(Console& console, std::string_view OldUseName);

}  // namespace lineweir
