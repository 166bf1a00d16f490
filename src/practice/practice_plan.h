#pragma once

#include "clocks/show_plan.h"
#include "practice/practice_levels.h"

namespace lineweir::practice {

// The plan that the event clock follows: the parts of the level's show from that time of day on, in
// seconds. A show over midnight has a plan that ends with the day, since a plan knows no other.
ShowPlan plan_of(const LevelRule& level, int begins);

}  // namespace lineweir::practice
