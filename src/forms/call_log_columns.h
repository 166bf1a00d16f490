#pragma once

#include <array>
#include <string_view>

#include "lines/caller_fields.h"

namespace lineweir {

inline constexpr std::string_view call_log_table = "Caller Records";

struct CallLogColumn {
  CallerField field;
  // Empty for the column that the user names.
  std::string_view name;
  // In characters; a longer value is cut.
  std::size_t size;
};

// The table's columns in their order.
inline constexpr std::array<CallLogColumn, caller_fields.size()> call_log_columns = [] {
  std::array<CallLogColumn, caller_fields.size()> columns{};
  for (const CallerFieldRule& rule : caller_fields) {
    const bool user_named = rule.field == user_named_field;
    columns[rule.log.position] = {rule.field, user_named ? std::string_view() : rule.title,
                                  rule.log.size};
  }
  return columns;
}();

constexpr int log_position(CallerField field) {
  return static_cast<int>(rule_of(field).log.position);
}

}  // namespace lineweir
