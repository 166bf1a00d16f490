#pragma once

#include <initializer_list>
#include <string_view>

#include "base/time_text.h"
#include "clocks/show_plan.h"

namespace lineweir::test {

struct PlanEvent {
  std::string_view ends;
  std::string_view text;
};

// A plan with these events from entry 3 on.
inline ShowPlan plan_of(std::string_view start, std::string_view end,
                        std::initializer_list<PlanEvent> events = {}) {
  ShowPlan plan;
  plan.ShowTimes(show_start_entry) = start;
  plan.ShowTimes(show_end_entry) = end;
  int entry = first_event_entry;
  for (const PlanEvent& event : events) {
    plan.ShowTimes(entry) = event.ends;
    plan.ShowTexts(entry) = event.text;
    ++entry;
  }
  return plan;
}

inline int at(std::string_view time) { return required_time_of_day(time); }

}  // namespace lineweir::test
