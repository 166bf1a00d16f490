#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "serverlink/profile_flag_table.h"

namespace lineweir {

class CallerDataEntry;
class Fonts;
class Modes;
struct ConsoleState;

// The flag of that use in a received block, where there is one; nothing where the block ends
// before.
std::optional<bool> flag_in(std::string_view block, FlagUse use);

// The flags of the profile at this console.
class ProfileFlags {
 public:
  ProfileFlags(ConsoleState& state, CallerDataEntry& caller_data, Modes& modes, const Fonts& fonts);

  std::string write() const;

  // Applies the flags that the block begins with, in their order; false where it ends before the
  // last. Those of the font and the number of lines are the caller's to apply.
  bool apply(std::string_view block);

 private:
  bool value_of(const ProfileFlag& flag) const;
  void apply(const ProfileFlag& flag, bool set);
  // What the rights or the equipment forbid a profile doesn't turn on: nobody could end it.
  bool is_forbidden(const ProfileFlag& flag) const;
  bool digits_have_room() const;

  ConsoleState& state_;
  CallerDataEntry& caller_data_;
  Modes& modes_;
  const Fonts& fonts_;
};

}  // namespace lineweir
