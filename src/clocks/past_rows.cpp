#include "clocks/past_rows.h"

#include <string_view>

#include "base/text.h"
#include "base/time_text.h"
#include "clocks/time_entry.h"

namespace lineweir {
namespace {

std::optional<int> whole_time(std::string_view text) {
  return text.size() == full_time_length ? time_of_day(text) : std::nullopt;
}

bool has_row_ending_at(const ShowPlan& plan, std::string_view time) {
  for (int entry = first_event_entry; entry <= show_entry_count; ++entry) {
    if (plan.ShowTimes(entry).trimmed() == time) return true;
  }
  return false;
}

}  // namespace

std::optional<PastRows> past_rows(const ShowPlan& edited, const ShowPlan& saved, int time_of_day) {
  const auto is_past = [&](std::string_view text) {
    const auto time = whole_time(text);
    return time && *time <= time_of_day;
  };
  const std::string_view end = edited.ShowTimes(show_end_entry).trimmed();
  if (is_past(end) && end != saved.ShowTimes(show_end_entry).trimmed()) {
    return PastRows{show_end_entry, std::string(end), 0};
  }
  std::optional<PastRows> past;
  for (int entry = first_event_entry; entry <= show_entry_count; ++entry) {
    const std::string_view time = edited.ShowTimes(entry).trimmed();
    if (!is_past(time) || has_row_ending_at(saved, time)) continue;
    if (!past) past = PastRows{entry, std::string(time), 0};
    ++past->rows;
  }
  return past;
}

std::string past_rows_text(const PastRows& past) {
  const std::string time = plan_time_as_shown(past.time);
  if (past.rows == 0) return "Show End, " + time + ", is already past today.";
  if (past.rows == 1) return "The row until " + time + " is already past today.";
  return std::to_string(past.rows) + " of the rows typed are already past today, the first at " +
         time + ".";
}

std::string plan_time_as_shown(std::string_view text) {
  const auto time = whole_time(trimmed(text));
  return time ? clock_text(*time) : std::string(text);
}

}  // namespace lineweir
