#pragma once

#include <optional>
#include <string_view>

#include "state/settings_record.h"

namespace lineweir {

class DisplayOptions;
class Fonts;
class LineCountChange;
class ProfileFiles;
class ProfileFlags;
class ProfileWindow;
enum class ProfileStep;
struct ConsoleState;
struct ProfileValues;

// The profile that a server sends behind the rights: the user finds his options as he left them at
// another seat. It may come from anywhere and hold anything; what it can't mean is passed over.
class ReceivedProfile {
 public:
  ReceivedProfile(ConsoleState& state, ProfileFlags& flags, ProfileFiles& files,
                  DisplayOptions& display, ProfileWindow& window, Fonts& fonts,
                  LineCountChange& line_count);

  // Applies a block. It never changes what the user is editing.
  void SetUserProfile(std::string_view ProfileBlock);

 private:
  void UserProfileTimer_Timer();

  // Tells what the block says of the window, if it gets so far.
  void apply(std::string_view block, std::optional<ProfileValues>& window);
  void carry_out(ProfileStep step, const ProfileValues& values);
  void take_window(const ProfileValues& values);
  void take_show_plan(const ProfileValues& values);
  void take_clocks_and_widths(const ProfileValues& values);
  void take_offset(const ProfileValues& values);
  void show_columns(const ProfileValues& values);
  void show_font(const ProfileValues& values, std::string_view block);
  ColumnNumbers widths(const ProfileValues& values) const;

  ConsoleState& state_;
  ProfileFlags& flags_;
  ProfileFiles& files_;
  DisplayOptions& display_;
  ProfileWindow& window_;
  Fonts& fonts_;
  LineCountChange& line_count_;
  bool applying_ = false;
};

}  // namespace lineweir
