#pragma once

#include <string>
#include <string_view>

namespace lineweir {

class DisplayOptions;
class Fonts;
class Links;
class ProfileFiles;
class ProfileFlags;
class WindowSize;
struct ConsoleState;
struct ProfileValues;

// The profile as this console writes it: the text in which a server keeps a user's options, so that
// he finds them at every seat. It is the flags of profile_flag_table.h, then the fields of
// profile_fields.h, each ended by a char 3. In front stand the user's name and a char 3, which a
// server takes off: ReceivedProfile has a profile without them.
class UserProfile {
 public:
  UserProfile(ConsoleState& state, const Links& links, const ProfileFlags& flags,
              const ProfileFiles& files, DisplayOptions& display, const WindowSize& window,
              const Fonts& fonts);

  // The block to send. A name that isn't empty becomes the user's.
  std::string PrepareUserData(std::string_view TheName);

  // Gives it to the server, if that keeps profiles. A failure is reported and not told.
  void SendUserProfile(std::string_view OldUseName);

 private:
  ProfileValues values() const;

  ConsoleState& state_;
  const Links& links_;
  const ProfileFlags& flags_;
  const ProfileFiles& files_;
  DisplayOptions& display_;
  const WindowSize& window_;
  const Fonts& fonts_;
};

}  // namespace lineweir
