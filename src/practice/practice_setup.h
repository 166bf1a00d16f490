#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lineweir {
struct Console;
}

namespace lineweir::practice {

// Below the folder of the real console, and all that a practice console writes to.
inline constexpr std::string_view practice_folder = "Practice";
inline constexpr std::string_view practice_log = "Calls.mdb";
inline constexpr std::string_view practice_plan = "Plan.txt";
inline constexpr std::string_view practice_hot_list = "MESSAGES.LWB";

// The settings with which a practice console begins: the look of the real one's, of which these are
// the stored bytes, and none of its ports, servers, names and files. Nothing where the real console
// has no settings yet.
std::optional<std::string> practice_settings(const std::optional<std::string>& real);

// Makes a console that has started one for practice: its port, log and hot list are those of its
// folder, and what would lead out of it can't be chosen.
void set_up_for_practice(Console& console);

}  // namespace lineweir::practice
