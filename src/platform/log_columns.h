#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/names.h"
#include "platform/database.h"

namespace lineweir::platform {

// A column that the table doesn't have.
inline constexpr int no_place = -1;

// Where a table has the columns of a log, which are given by name and in their order; nothing where
// it isn't that log's table. Others that only a newer release knows may stand between and behind
// them. A column without a name is the next one behind those in front of it. What is given behind
// that one has been added since, and an older file may lack it.
inline std::optional<std::vector<int>> places_of_columns(const std::vector<DatabaseColumn>& present,
                                                         std::span<const std::string_view> names) {
  std::vector<int> places;
  std::size_t next = 0;
  bool may_lack = false;
  for (const std::string_view name : names) {
    std::size_t place = next;
    while (place < present.size() && !name.empty() && !same_name(present[place].name, name)) {
      ++place;
    }
    if (place < present.size()) {
      places.push_back(static_cast<int>(place));
      next = place + 1;
    } else if (may_lack) {
      places.push_back(no_place);
    } else {
      return std::nullopt;
    }
    may_lack = may_lack || name.empty();
  }
  return places;
}

}  // namespace lineweir::platform
