#pragma once

#include <string>
#include <vector>

#include "serverlink/profile_fields.h"
#include "support/scripted_console.h"
#include "wire/server_packet_codec.h"

namespace lineweir::test {

inline constexpr std::size_t count_of_flags = 43;
inline constexpr std::size_t count_of_fields = 47;

// The console's own profile as a server sends it: without the name in front.
inline std::string block_of(Console& console) {
  const std::string block = console.user_profile.PrepareUserData("");
  return block.substr(block.find(item_end) + 1);
}

inline std::string flags_of(Console& console) {
  return block_of(console).substr(0, count_of_flags);
}

inline std::vector<std::string> fields_of(Console& console) {
  return decode_list(block_of(console).substr(count_of_flags));
}

inline std::string joined(const std::string& flags, const std::vector<std::string>& fields) {
  std::string block = flags;
  for (const std::string& field : fields) block += field + item_end;
  return block;
}

// A profile that would leave the console as it is, to be changed in one place and applied. Places
// count from 1.
struct EditedProfile {
  explicit EditedProfile(Console& target)
      : console(target), flags(flags_of(target)), fields(fields_of(target)) {}

  EditedProfile& flag(std::size_t place, bool set) {
    flags.at(place - 1) = set ? '1' : '0';
    return *this;
  }
  EditedProfile& field(std::size_t place, const std::string& text) {
    fields.at(place - 1) = text;
    return *this;
  }
  // The first field of the group of a column, from 2 to 12.
  static std::size_t group_of(int column) {
    return 12 + 3 * static_cast<std::size_t>(column - first_optional_column);
  }
  EditedProfile& column(int number, const std::string& place, const std::string& mark,
                        const std::string& width) {
    const std::size_t group = group_of(number);
    return field(group, place).field(group + 1, mark).field(group + 2, width);
  }
  // With so many fields.
  EditedProfile& cut(std::size_t count) {
    fields.resize(count);
    return *this;
  }
  std::string block() const { return joined(flags, fields); }
  void apply() const { console.received_profile.SetUserProfile(block()); }

  Console& console;
  std::string flags;
  std::vector<std::string> fields;
};

}  // namespace lineweir::test
