#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "clocks/show_plan.h"

namespace lineweir {

// What of an edited plan has been given a time that has gone by already.
struct PastRows {
  // The first of them: Show End, or the entry of a row.
  int entry = 0;
  // "hh:mm:ss", as it was typed.
  std::string time;
  // How many rows there are; 0 where it is the end of the show.
  int rows = 0;

  friend bool operator==(const PastRows&, const PastRows&) = default;
};

// Looks for what ends at or before the time of day, in seconds from midnight. What the saved plan
// has too isn't meant: while a show runs its first rows have gone by, which is no mistake. An
// hourly show never goes by.
std::optional<PastRows> past_rows(const ShowPlan& edited, const ShowPlan& saved, int time_of_day);

// One sentence for the user.
std::string past_rows_text(const PastRows& past);

// A time of a plan as the clock of the show tells it: "02:15:00 PM" for "14:15:00". What isn't a
// whole time of day stays as it is.
std::string plan_time_as_shown(std::string_view text);

}  // namespace lineweir
