#pragma once

#include "clocks/show_plan.h"

namespace lineweir {

struct ConsoleState;

// Form2's notice that what was typed is past already, beside the button that saves. It says so and
// hinders nothing: the plan may be tomorrow's. Its button leads to the place in question.
class PlanPastNotice {
 public:
  explicit PlanPastNotice(ConsoleState& state);

  void show(const ShowPlan& edited, const ShowPlan& saved);

 private:
  void PastRow_Click();

  ConsoleState& state_;
  // The entry that the notice is about; 0 while there is none.
  int entry_ = 0;
};

}  // namespace lineweir
