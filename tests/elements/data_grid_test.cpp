#include "elements/data_grid.h"

#include <doctest/doctest.h>

#include "elements/form.h"
#include "support/failure_number.h"
#include "support/listen.h"

namespace lineweir::test {
namespace {

struct Table {
  Form form{"Form1"};
  DataGrid grid{form, "DBGrid1"};
  int selections = 0;

  Table() {
    grid.headings = std::vector<std::string>{"Name", "City"};
    grid.row_texts = [](int row) {
      return std::vector<std::string>{"name " + std::to_string(row), "city"};
    };
    listen(grid.on_sel_change, [this] { ++selections; });
    grid.show_other_rows(10);
  }
};

TEST_SUITE("elements/data grid") {
  TEST_CASE("a row is asked for when it is looked at, and row 0 is the headings") {
    Table table;
    CHECK(table.grid.cell(0, 1) == "City");
    CHECK(table.grid.cell(7, 0) == "name 7");
  }

  TEST_CASE("a cell outside the grid is failure 9") {
    Table table;
    for (const auto& [row, column] : {std::pair{11, 0}, {-1, 0}, {1, 2}, {1, -1}, {0, 2}}) {
      CAPTURE(row);
      CAPTURE(column);
      CHECK(failure_number_of([&] { table.grid.cell(row, column); }) == 9);
    }
  }

  TEST_CASE("a selection tells its handler once, and one outside the grid is failure 9") {
    Table table;
    table.grid.select(3);
    table.grid.select(3);
    CHECK(table.selections == 1);
    CHECK(failure_number_of([&] { table.grid.select(11); }) == 9);
    CHECK(table.grid.row == 3);
    table.grid.select(0);
    CHECK(table.selections == 2);
  }

  TEST_CASE("rows that are put in leave the selection with its row") {
    Table table;
    std::vector<std::pair<int, int>> told;
    table.grid.on_put_in = [&](int at, int count) { told.emplace_back(at, count); };
    table.grid.select(3);
    table.grid.put_in(1, 2);
    CHECK(table.grid.row == 5);
    table.grid.put_in(6, 4);
    CHECK(table.grid.row == 5);
    table.grid.put_in(5, 1);
    CHECK(table.grid.row == 6);
    CHECK(table.grid.rows == 17);
    CHECK(told == std::vector<std::pair<int, int>>{{1, 2}, {6, 4}, {5, 1}});
  }

  TEST_CASE("other rows take the selection away, also where their number is the same") {
    Table table;
    int times = 0;
    table.grid.on_other_rows = [&] { ++times; };
    table.grid.select(3);
    table.grid.show_other_rows(10);
    CHECK(table.grid.row == 0);
    CHECK(times == 1);
  }
}

}  // namespace
}  // namespace lineweir::test
