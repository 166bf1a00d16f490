#include "elements/grid.h"

#include "base/failure.h"

namespace lineweir {

Grid::Grid(Form& form, std::string_view name, int rows, int columns, int index)
    : Control(form, ElementKind::Grid, name, index), rows_(rows), columns_(columns) {
  cells.set(std::vector<std::string>(static_cast<std::size_t>(rows * columns)));
}

std::size_t Grid::place(int at_row, int at_col) const {
  if (at_row < 0 || at_row >= rows_ || at_col < 0 || at_col >= columns_) {
    throw Failure(failure_number::out_of_range, "Subscript out of range");
  }
  return static_cast<std::size_t>(at_row) * static_cast<std::size_t>(columns_) +
         static_cast<std::size_t>(at_col);
}

const std::string& Grid::cell(int at_row, int at_col) const {
  return cells.get()[place(at_row, at_col)];
}

void Grid::set_cell(int at_row, int at_col, std::string_view text) {
  const std::size_t at = place(at_row, at_col);
  if (cells.get()[at] == text) return;
  auto changed = cells.get();
  changed[at] = text;
  cells = changed;
}

void Grid::select(int at_row, int at_col) {
  place(at_row, at_col);
  if (row == at_row && col == at_col) return;
  row = at_row;
  col = at_col;
  on_sel_change();
}

}  // namespace lineweir
