#include "callerdata/log_places.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/failure.h"
#include "base/names.h"
#include "forms/call_log_columns.h"
#include "platform/log_columns.h"

namespace lineweir {
namespace {

constexpr CallerLogColumn unknown_column = {.grid_width = 1500, .page_share = 8};

constexpr auto log_names = [] {
  std::array<std::string_view, call_log_columns.size()> names{};
  std::ranges::transform(call_log_columns, names.begin(), &CallLogColumn::name);
  return names;
}();

}  // namespace

std::optional<LogPlaces> LogPlaces::in(const std::vector<platform::DatabaseColumn>& columns) {
  auto places = platform::places_of_columns(columns, log_names);
  if (!places) return std::nullopt;
  return LogPlaces(std::move(*places));
}

int LogPlaces::of(CallerField field) const {
  return places_[static_cast<std::size_t>(log_position(field))];
}

const CallerLogColumn& LogPlaces::column_at(int place) const {
  for (std::size_t i = 0; i < places_.size(); ++i) {
    if (places_[i] == place) return rule_of(call_log_columns[i].field).log;
  }
  return unknown_column;
}

LogPlaces require_log_columns(const std::vector<platform::DatabaseColumn>& columns) {
  if (auto places = LogPlaces::in(columns)) return *places;
  std::size_t other = 0;
  while (other < columns.size() && same_name(columns[other].name, log_names[other])) ++other;
  const std::string_view name = log_names[other];
  throw Failure(failure_number::no_such_field,
                "The file's table \"" + std::string(call_log_table) +
                    "\" is not that of a call log: its column " + std::to_string(other + 1) +
                    " should be " +
                    (name.empty() ? "the user's field." : "\"" + std::string(name) + "\"."));
}

std::vector<int> log_grid_widths(const std::vector<platform::DatabaseColumn>& columns) {
  const auto places = LogPlaces::in(columns);
  std::vector<int> widths;
  for (int place = 0; place < static_cast<int>(columns.size()); ++place) {
    widths.push_back((places ? places->column_at(place) : unknown_column).grid_width);
  }
  return widths;
}

}  // namespace lineweir
