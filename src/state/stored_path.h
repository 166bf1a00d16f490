#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "state/settings_record.h"

namespace lineweir {

// How many characters of a text the settings keep.
constexpr std::size_t stored_width(std::string SettingsRecord::*text) {
  for (const SettingsField& field : settings_fields) {
    const auto* member = std::get_if<std::string SettingsRecord::*>(&field.member);
    if (member != nullptr && *member == text) return field.width;
  }
  return 0;
}

inline constexpr std::size_t longest_plan_path = stored_width(&SettingsRecord::ShowDataFile);
inline constexpr std::size_t longest_log_path = stored_width(&SettingsRecord::DatabasePath);
inline constexpr std::size_t longest_hot_list_path = stored_width(&SettingsRecord::MessageFile);

// A path that the settings would cut leads nowhere at the next start: a Failure of number 5 says so
// when it is chosen.
void require_storable(std::string_view path, std::size_t longest);

}  // namespace lineweir
