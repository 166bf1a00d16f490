#pragma once

#include <functional>
#include <string>

#include "clocks/show_plan.h"

namespace lineweir {

class Grid;
struct ConsoleState;

// The two grids of Form2: what is typed into them, how the selection runs through both, and the
// validation that follows each move of it.
class ShowDataGrids {
 public:
  explicit ShowDataGrids(ConsoleState& state);

  // Shows the plan's events. The start of the first row isn't one of them and stays as it is.
  void show(const ShowPlan& plan);

  void write_headers();

  // Told when a cell has another text by a key.
  std::function<void()> on_typed;

  // The plan's entry of the row selected in the grid that has the focus; 0 if none has it.
  int selected_entry() const;

  // As after loading: no grid has the focus, and the first row is selected in both.
  void reset();

 private:
  struct Side {
    int number;
    // The plan's entry of row 1, less 1.
    int entry_above;
    Grid& grid;
    // The grid in which the rows go on.
    Grid& other;
  };

  void wire_side(const Side& side);
  void focus_on(int grid);
  void key_press(const Side& side, int& key);
  void move_down(const Side& side);
  void check_rows(Grid& grid);

  ConsoleState& state_;
  Side first_;
  Side second_;
  // The grid that has the focus: 1, 2, or 0 for none.
  int focused_grid_ = 0;
};

}  // namespace lineweir
