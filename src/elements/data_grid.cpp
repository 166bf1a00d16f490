#include "elements/data_grid.h"

#include "base/failure.h"

namespace lineweir {
namespace {

[[noreturn]] void fail_outside() {
  throw Failure(failure_number::out_of_range, "Subscript out of range");
}

}  // namespace

void DataGrid::show_other_rows(int count) {
  row = 0;
  rows = count;
  if (on_other_rows) on_other_rows();
}

void DataGrid::put_in(int at, int count) {
  rows = rows + count;
  if (row >= at) row = row + count;
  if (on_put_in) on_put_in(at, count);
}

std::string DataGrid::cell(int at_row, int at_col) const {
  if (at_row < 0 || at_row > rows || at_col < 0) fail_outside();
  const std::vector<std::string> texts = at_row == 0 ? headings.get()
                                         : row_texts ? row_texts(at_row)
                                                     : std::vector<std::string>();
  if (static_cast<std::size_t>(at_col) >= texts.size()) fail_outside();
  return texts[static_cast<std::size_t>(at_col)];
}

void DataGrid::select(int at_row) {
  if (at_row < 0 || at_row > rows) fail_outside();
  if (row == at_row) return;
  row = at_row;
  on_sel_change();
}

}  // namespace lineweir
