#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "forms/show_data_form.h"

namespace lineweir {

// The start and end of a row as a grid of the editor holds them.
struct PlanRowTimes {
  std::string start;
  std::string end;

  friend bool operator==(const PlanRowTimes&, const PlanRowTimes&) = default;
};
using PlanRows = std::array<PlanRowTimes, plan_rows_per_grid>;

enum class PlanRowFault { None, EndsBeforeItStarts, EndsAfterTheShow, NoTime };

// What a walk over a grid's rows comes to: the rows with each end carried over to the start of the
// next row, as far as the walk went, and the first fault.
struct PlanRowCheck {
  PlanRows rows;
  PlanRowFault fault = PlanRowFault::None;
  // A row ends with the show: it carries nothing over, and the headers of the two time columns go
  // blank where further rows would have been walked.
  bool blanks_headers = false;
};

// Walks rows 1 to 19; row 20 is never checked. A text of three characters or fewer is no time yet
// and is compared with nothing.
PlanRowCheck check_plan_rows(PlanRows rows, std::string_view show_end);

// The seconds that a trimmed text of the editor stands for, "xx:" counting as "00:"; nothing for a
// text that is no time.
std::optional<int> plan_time(std::string_view text);

// A text with more than "xx:".
constexpr bool is_begun_time(std::string_view text) { return text.size() > 3; }

}  // namespace lineweir
