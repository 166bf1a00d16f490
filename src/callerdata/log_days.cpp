#include "callerdata/log_days.h"

#include <algorithm>

#include "base/text.h"
#include "base/time_text.h"
#include "callerdata/log_places.h"
#include "callerdata/log_slices.h"
#include "callerdata/log_text.h"

namespace lineweir {
namespace {

std::string key_of(std::string_view date) {
  std::string key;
  append_sort_key(key, SortKind::Date, date);
  return key;
}

}  // namespace

void LogDays::begin(platform::Recordset& rows) {
  const LogPlaces places = require_log_columns(rows.fields());
  rows_ = &rows;
  columns_ = {places.of(CallerField::CallDate), places.of(CallerField::TimeOnHold),
              places.of(CallerField::TimePlacedOnAir)};
  newest_.reset();
  read_once_ = false;
  days_.clear();
}

bool LogDays::read_on() {
  const int visited =
      rows_->scan({false, newest_, log_rows_a_slice, columns_}, [this](auto row, auto values) {
        newest_ = row;
        add(values[0], values[1], values[2]);
      });
  const bool more = visited == log_rows_a_slice;
  if (!more) read_once_ = true;
  return more;
}

void LogDays::add(std::string_view date, std::string_view wait, std::string_view placed_on_air) {
  const std::string key = key_of(date);
  if (key.empty()) return;
  LogDay& day = days_[key];
  ++day.calls;
  if (!trimmed(placed_on_air).empty()) ++day.on_air;
  if (const auto waited = time_of_day(wait)) {
    day.longest_wait = std::max(day.longest_wait.value_or(0), *waited);
  }
}

std::optional<LogDay> LogDays::day(std::string_view date_utf8) const {
  const auto found = days_.find(key_of(date_utf8));
  if (!read_once_ || found == days_.end()) return std::nullopt;
  return found->second;
}

std::string day_text(const LogDay& day, std::string_view date_utf8,
                     const platform::DateTime& today) {
  const bool is_today = key_of(date_utf8) == key_of(date_text(today));
  std::string text = is_today ? std::string("Today") : std::string(trimmed(date_utf8));
  text += ": " + calls_text(day.calls) + ", " + grouped_number(day.on_air) + " on air";
  if (day.longest_wait) text += ", longest wait " + hms_text(*day.longest_wait);
  return text;
}

}  // namespace lineweir
