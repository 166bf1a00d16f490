#include "clocks/show_data_grids.h"

#include <utility>

#include "base/text.h"
#include "clocks/past_rows.h"
#include "clocks/show_data_rows.h"
#include "clocks/time_entry.h"
#include "forms/show_data_form.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr int down_arrow_code = 40;
constexpr int delete_character = 127;

constexpr const char* row_ends_early =
    "Values in Column 2 must be greater than values in Column 1!";
constexpr const char* row_ends_late = "Times may not be later than Show End!";

bool is_printable(int key) { return key >= ' ' && key <= 255 && key != delete_character; }

PlanRows times_in(const Grid& grid) {
  PlanRows rows;
  int row = 0;
  for (PlanRowTimes& times : rows) {
    ++row;
    times = {grid.cell(row, row_start_column), grid.cell(row, row_end_column)};
  }
  return rows;
}

void write_starts(Grid& grid, const PlanRows& rows) {
  int row = 0;
  for (const PlanRowTimes& times : rows) grid.set_cell(++row, row_start_column, times.start);
}

void write_time_headers(Grid& grid, std::string_view text) {
  grid.set_cell(0, row_start_column, text);
  grid.set_cell(0, row_end_column, text);
}

// The cells of a grid with its rows filled from the plan, as one change.
void fill(Grid& grid, const ShowPlan& plan, int entry_above, std::string start) {
  auto cells = grid.cells.get();
  auto cell = cells.begin() + grid.columns();
  for (int row = 1; row <= plan_rows_per_grid; ++row) {
    *cell++ = std::move(start);
    start = plan.ShowTimes(entry_above + row).trimmed();
    *cell++ = start;
    *cell++ = plan.ShowTexts(entry_above + row).trimmed();
  }
  grid.cells = cells;
}

// A key in a cell that takes any text. Nothing where the cell stays as it is.
std::optional<std::string> typed_text(std::string text, int key) {
  if (key == backspace_key) {
    if (trimmed(text).empty()) return std::nullopt;
    text.pop_back();
    return text;
  }
  if (!is_printable(key)) return std::nullopt;
  return text + static_cast<char>(key);
}

}  // namespace

ShowDataGrids::ShowDataGrids(ConsoleState& state)
    : state_(state),
      first_{1, show_end_entry, state.Form2.Grid1, state.Form2.Grid2},
      second_{2, show_end_entry + plan_rows_per_grid, state.Form2.Grid2, state.Form2.Grid1} {
  for (Grid* grid : {&first_.grid, &second_.grid}) {
    grid->shown_as = [](int column, std::string_view text) {
      return column == row_text_column ? std::string(text) : plan_time_as_shown(text);
    };
  }
  wire_side(first_);
  wire_side(second_);
}

void ShowDataGrids::wire_side(const Side& side) {
  const std::string handler = "Form2_" + side.grid.name();
  wire(side.grid.on_got_focus, state_.trace, handler + "_GotFocus", [this, &side, handler] {
    focus_on(side.number);
    if (side.number == first_.number) return;
    const auto& last_end = first_.grid.cell(plan_rows_per_grid, row_end_column);
    side.grid.set_cell(1, row_start_column, trimmed(last_end));
  });
  wire(side.grid.on_lost_focus, state_.trace, handler + "_LostFocus",
       [this, handler] { focus_on(0); });
  wire(side.grid.on_key_press, state_.trace, handler + "_KeyPress",
       [this, &side, handler](int& key) { key_press(side, key); });
  wire(side.grid.on_key_down, state_.trace, handler + "_KeyDown",
       [this, &side](int& key_code, int) {
         if (key_code != down_arrow_code || side.grid.row < plan_rows_per_grid) return;
         key_code = 0;
         move_down(side);
       });
  wire(side.grid.on_sel_change, state_.trace, handler + "_SelChange",
       [this, &side, handler] { check_rows(side.grid); });
}

void ShowDataGrids::show(const ShowPlan& plan) {
  fill(first_.grid, plan, first_.entry_above, first_.grid.cell(1, row_start_column));
  fill(second_.grid, plan, second_.entry_above,
       std::string(plan.ShowTimes(second_.entry_above).trimmed()));
}

void ShowDataGrids::write_headers() {
  for (Grid* grid : {&first_.grid, &second_.grid}) {
    write_time_headers(*grid, "Time");
    grid->set_cell(0, row_text_column, "Text");
  }
}

int ShowDataGrids::selected_entry() const {
  if (focused_grid_ == 0) return 0;
  const Side& side = focused_grid_ == first_.number ? first_ : second_;
  return side.grid.row < 1 ? 0 : side.entry_above + side.grid.row;
}

void ShowDataGrids::reset() {
  focus_on(0);
  for (Grid* grid : {&first_.grid, &second_.grid}) {
    grid->row = 1;
    grid->col = row_end_column;
  }
}

void ShowDataGrids::focus_on(int grid) {
  focused_grid_ = grid;
  state_.Form2.InsertRow.enabled = grid != 0;
  state_.Form2.DeleteRow.enabled = grid != 0;
}

void ShowDataGrids::key_press(const Side& side, int& key) {
  const int pressed = std::exchange(key, 0);
  if (pressed == tab_key || pressed == enter_key) return move_down(side);
  Grid& grid = side.grid;
  if (grid.row < 1 || grid.col == row_start_column) return;
  const std::string& cell = grid.cell(grid.row, grid.col);
  const auto typed = grid.col == row_end_column ? typed_time(show_time_entry, cell, pressed)
                                                : typed_text(cell, pressed);
  if (!typed) return;
  grid.set_cell(grid.row, grid.col, *typed);
  if (on_typed) on_typed();
}

void ShowDataGrids::move_down(const Side& side) {
  if (side.grid.row < plan_rows_per_grid) {
    side.grid.select(side.grid.row + 1, side.grid.col);
    return;
  }
  side.other.select(1, side.grid.col);
  side.other.set_focus();
}

void ShowDataGrids::check_rows(Grid& grid) {
  const PlanRowCheck check = check_plan_rows(times_in(grid), state_.Form2.Text1.text);
  write_starts(grid, check.rows);
  if (check.blanks_headers) write_time_headers(grid, "");
  switch (check.fault) {
    case PlanRowFault::None:
      return;
    case PlanRowFault::EndsBeforeItStarts:
      return state_.messages.ShowMessage(row_ends_early);
    case PlanRowFault::EndsAfterTheShow:
      return state_.messages.ShowMessage(row_ends_late);
    case PlanRowFault::NoTime:
      throw Failure(failure_number::type_mismatch, "Type mismatch");
  }
}

}  // namespace lineweir
