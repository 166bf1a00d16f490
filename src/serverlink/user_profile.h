#pragma once

#include <string>
#include <string_view>

namespace lineweir {

class CallLogFile;
class CallerDataEntry;
class DisplayOptions;
class Fonts;
class ShowPlanStore;
class WindowSize;
struct ConsoleState;

// The text in which a server keeps a user's options: 43 flags, each "1" or "0", then fields, each
// ended by a char 3: height, width, group, window state, show data file, database, operator, group
// again, the two warning times, hot list; place, "T" or "F" and width of columns 2 to 12; the
// message font's name and size; the time offset. As the console sends it, the user's name and a
// char 3 stand in front.

inline constexpr int no_group = -1;

// TextWrit_ExtractMessageGroup: the group in a received block, no_group where it isn't there.
int group_of_profile(std::string_view block);

// The profile of the user at this console.
class UserProfile {
 public:
  UserProfile(ConsoleState& state, ShowPlanStore& show_plan, DisplayOptions& display,
              WindowSize& window, Fonts& fonts, CallLogFile& call_log_file,
              CallerDataEntry& caller_data);

  // The block to send. A name that isn't empty becomes the user's.
  std::string PrepareUserData(std::string_view TheName);

 private:
  std::string flags() const;
  void append_column(std::string& block, int column) const;

  ConsoleState& state_;
  ShowPlanStore& show_plan_;
  DisplayOptions& display_;
  WindowSize& window_;
  Fonts& fonts_;
  CallLogFile& call_log_file_;
  CallerDataEntry& caller_data_;
};

}  // namespace lineweir
