#include "clocks/plan_past_notice.h"

#include "base/time_text.h"
#include "clocks/past_rows.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {

PlanPastNotice::PlanPastNotice(ConsoleState& state) : state_(state) {
  wire(state.Form2.PastRow.on_click, state_.trace, "Form2_PastRow_Click",
       [this] { PastRow_Click(); });
}

void PlanPastNotice::show(const ShowPlan& edited, const ShowPlan& saved) {
  ShowDataForm& form = state_.Form2;
  const int now = seconds_of_day(state_.services.clock.now()) + state_.clock_state.DelayOffset;
  const auto past = past_rows(edited, saved, now);
  entry_ = past ? past->entry : 0;
  form.PastLabel.caption = past ? past_rows_text(*past) : std::string();
  form.PastRow.visible = past.has_value();
}

void PlanPastNotice::PastRow_Click() {
  ShowDataForm& form = state_.Form2;
  if (entry_ == show_end_entry) return form.Text1.set_focus();
  if (entry_ < first_event_entry) return;
  const int row = entry_ - show_end_entry;
  Grid& grid = row <= plan_rows_per_grid ? form.Grid1 : form.Grid2;
  grid.select(row <= plan_rows_per_grid ? row : row - plan_rows_per_grid, row_end_column);
  grid.set_focus();
}

}  // namespace lineweir
