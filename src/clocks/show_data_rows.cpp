#include "clocks/show_data_rows.h"

#include "base/text.h"
#include "base/time_text.h"

namespace lineweir {
namespace {

constexpr std::string_view no_hour = "00:";

PlanRowFault fault_of(std::string_view start, std::string_view end, std::string_view show_end) {
  if (!is_begun_time(end)) return PlanRowFault::None;
  const auto ends = plan_time(end);
  if (!ends) return PlanRowFault::NoTime;
  if (is_begun_time(start)) {
    const auto starts = plan_time(start);
    if (!starts) return PlanRowFault::NoTime;
    if (*ends < *starts) return PlanRowFault::EndsBeforeItStarts;
  }
  if (is_begun_time(show_end)) {
    const auto show_ends = plan_time(show_end);
    if (!show_ends) return PlanRowFault::NoTime;
    if (*ends > *show_ends) return PlanRowFault::EndsAfterTheShow;
  }
  return PlanRowFault::None;
}

}  // namespace

std::optional<int> plan_time(std::string_view text) {
  if (!text.starts_with('x')) return time_of_day(text);
  std::string changed(text);
  changed.replace(0, no_hour.size(), no_hour);
  return time_of_day(changed);
}

PlanRowCheck check_plan_rows(PlanRows rows, std::string_view show_end) {
  show_end = trimmed(show_end);
  PlanRowCheck check;
  const std::size_t last_walked = rows.size() - 2;
  for (std::size_t i = 0; i <= last_walked; ++i) {
    const std::string_view end = trimmed(rows[i].end);
    check.fault = fault_of(trimmed(rows[i].start), end, show_end);
    if (check.fault != PlanRowFault::None) break;
    if (!show_end.empty() && end == show_end) {
      check.blanks_headers = i < last_walked;
      break;
    }
    rows[i + 1].start = end;
  }
  check.rows = std::move(rows);
  return check;
}

}  // namespace lineweir
