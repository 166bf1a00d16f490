#pragma once

#include "base/event.h"
#include "elements/control.h"

namespace lineweir {

// A column of a data grid as it is shown, and the words over it.
struct DataGridColumn {
  int column = 0;
  std::string heading;
};

// A piece of a text: its first byte and how many.
struct TextPiece {
  std::size_t begin = 0;
  std::size_t size = 0;

  friend bool operator==(const TextPiece&, const TextPiece&) = default;
};

// A table of texts with any number of rows, of which only those that are looked at are asked for.
// Rows count from 1, as in a Grid, where row 0 is the headings; columns count from 0.
class DataGrid : public Control {
 public:
  DataGrid(Form& form, std::string_view name, int index = no_index)
      : Control(form, ElementKind::DataGrid, name, index) {}

  Property<std::vector<std::string>> headings{*this, PropertyId::Headings};
  Property<int> rows{*this, PropertyId::Rows, 0};
  // The selected row; 0 while there is none.
  Property<int> row{*this, PropertyId::Row, 0};
  // The column whose heading shows that the rows are in its order; -1 for none.
  Property<int> sort_column{*this, PropertyId::SortColumn, -1};
  Property<bool> sort_down{*this, PropertyId::SortDown, false};

  // Column widths in twips.
  std::vector<int> column_widths;

  // The columns as they are shown, in their order; where none are named, all as they are under
  // their headings. To be set before the headings. The look's only, so no property.
  std::vector<DataGridColumn> shown_columns;

  // The pieces of a cell's text, as it is shown in UTF-8, that are to catch the eye; may be empty.
  std::function<std::vector<TextPiece>(std::string_view utf8)> marked_pieces;

  // Gives the texts of a row, one a column; set by whoever fills the grid.
  std::function<std::vector<std::string>(int row)> row_texts;

  // The selection moved, by the user's hand or by select().
  Event<void()> on_sel_change;
  // The user clicks the heading of a column.
  Event<void(int column)> on_heading_click;

  // Other rows are in the grid now, or the same with other texts; none is selected.
  void show_other_rows(int count);

  // So many more rows are in the grid, the first of them as row `at`. The selection stays with its
  // row.
  void put_in(int at, int count);

  // Told of both, behind them; for whoever draws the grid.
  std::function<void()> on_other_rows;
  std::function<void(int at, int count)> on_put_in;

  // The text of a cell, also of a heading. A cell outside the grid is a Failure of number 9.
  std::string cell(int at_row, int at_col) const;

  // Moves the selection and tells on_sel_change, as a click on a row does. Row 0 selects none; a
  // row outside the grid is a Failure of number 9.
  void select(int at_row);
};

}  // namespace lineweir
