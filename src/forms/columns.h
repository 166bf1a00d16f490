#pragma once

#include <array>
#include <string_view>

#include "lines/caller_fields.h"

namespace lineweir {

// The columns of the rows, by their fixed number: three of the line itself, then the caller's.
inline constexpr int number_column = 0;
inline constexpr int status_column = 1;
inline constexpr int time_column = 2;
inline constexpr int first_caller_column = 3;
inline constexpr int column_count = first_caller_column + entry_field_count;

// The line's number and its status are always shown, the others as the user chooses.
inline constexpr int first_optional_column = time_column;

constexpr int column_of(CallerField field) { return first_caller_column + static_cast<int>(field); }

inline constexpr int user_column = column_of(user_named_field);

struct ColumnRule {
  // The array of the rows' labels.
  std::string_view element;
  std::string_view heading;
  // Twips.
  int width;
  bool shown_at_first;
};

inline constexpr std::array<ColumnRule, column_count> column_rules = [] {
  std::array<ColumnRule, column_count> rules = {{
      {"LineNumb", "#", 350, true},
      {"LineStatus", "Status", 800, true},
      {"LineTime", "Time", 835, true},
  }};
  for (const CallerFieldRule& field : entry_fields) {
    rules[static_cast<std::size_t>(column_of(field.field))] = {
        field.row.element, field.title, field.row.width, field.row.shown_at_first};
  }
  return rules;
}();

}  // namespace lineweir
