#include "practice/practice_plan.h"

#include <algorithm>

#include "base/time_text.h"

namespace lineweir::practice {

ShowPlan plan_of(const LevelRule& level, int begins) {
  const auto at = [](int second) { return hms_text(std::min(second, seconds_per_day - 1)); };
  ShowPlan plan;
  plan.ShowTimes(show_start_entry) = at(begins);
  plan.ShowTimes(show_end_entry) = at(begins + show_seconds(level));
  int entry = first_event_entry;
  int ends = begins;
  for (const ShowPart& part : level.parts) {
    ends += part.seconds;
    plan.ShowTimes(entry) = at(ends);
    plan.ShowTexts(entry) = part.name;
    ++entry;
  }
  return plan;
}

}  // namespace lineweir::practice
