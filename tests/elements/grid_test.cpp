#include "elements/grid.h"

#include <doctest/doctest.h>

#include "elements/form.h"
#include "support/failure_number.h"
#include "support/listen.h"
#include "support/recording_watch.h"

namespace lineweir::test {
namespace {

TEST_SUITE("elements/grid") {
  TEST_CASE("cells are empty at first, and each is its own") {
    Form form("Form");
    Grid grid(form, "Grid1", 3, 2);
    CHECK(grid.rows() == 3);
    CHECK(grid.columns() == 2);

    for (int row = 0; row < 3; ++row) {
      for (int col = 0; col < 2; ++col) {
        CHECK(grid.cell(row, col).empty());
        grid.set_cell(row, col, std::to_string(row) + std::to_string(col));
      }
    }
    CHECK(grid.cell(0, 1) == "01");
    CHECK(grid.cell(2, 0) == "20");
    CHECK(grid.cells.get() == std::vector<std::string>{"00", "01", "10", "11", "20", "21"});
  }

  TEST_CASE("a cell outside the grid is failure 9") {
    Form form("Form");
    Grid grid(form, "Grid1", 3, 2);
    struct Cell {
      int row;
      int col;
    };
    for (const Cell outside : {Cell{-1, 0}, Cell{0, -1}, Cell{3, 0}, Cell{0, 2}, Cell{2, 3}}) {
      CHECK(failure_number_of([&] { grid.cell(outside.row, outside.col); }) == 9);
      CHECK(failure_number_of([&] { grid.set_cell(outside.row, outside.col, "x"); }) == 9);
      CHECK(failure_number_of([&] { grid.select(outside.row, outside.col); }) == 9);
    }
    CHECK(grid.row.get() == 1);
    CHECK(grid.col.get() == 1);
  }

  TEST_CASE("a change of a cell is one notice, an equal text none") {
    Form form("Form");
    Grid grid(form, "Grid1", 3, 2);
    RecordingWatch watch(form);
    grid.set_cell(1, 1, "x");
    grid.set_cell(1, 1, "x");
    CHECK(watch.take() == Told{"Grid1.Cells"});
  }

  TEST_CASE("a moved selection runs its event once, an unmoved one none") {
    Form form("Form");
    Grid grid(form, "Grid1", 3, 3);
    int moves = 0;
    listen(grid.on_sel_change, [&] { ++moves; });
    grid.select(1, 1);
    CHECK(moves == 0);
    grid.select(2, 0);
    CHECK(moves == 1);
    CHECK(grid.row.get() == 2);
    CHECK(grid.col.get() == 0);
  }
}

}  // namespace
}  // namespace lineweir::test
