#pragma once

#include "base/event.h"
#include "elements/control.h"

namespace lineweir {

// A table of texts with one header row, row 0, and a selected cell. The cells are one property, so
// that a change of any of them is one notice.
class Grid : public Control {
 public:
  Grid(Form& form, std::string_view name, int rows, int columns, int index = no_index);

  Property<int> row{*this, PropertyId::Row, 1};
  Property<int> col{*this, PropertyId::Col, 1};
  Property<std::vector<std::string>> cells{*this, PropertyId::Cells};

  int rows() const { return rows_; }
  int columns() const { return columns_; }

  // A cell outside the grid is a Failure of number 9.
  const std::string& cell(int at_row, int at_col) const;
  void set_cell(int at_row, int at_col, std::string_view text);

  // Column widths in twips, whether texts stand in the middle of their cells, and the first column
  // that the user types in; the columns in front of it follow from others. The look's only, so no
  // properties.
  std::vector<int> column_widths;
  bool centered = false;
  int first_typed_column = 0;

  // What stands over the columns in place of row 0, and how a cell's text is shown while it isn't
  // typed in, with the widest such text of each column. Where they are empty the cells are shown as
  // they are. The look's only, too.
  std::vector<std::string> shown_headings;
  std::vector<std::string> widest_texts;
  std::function<std::string(int column, std::string_view text)> shown_as;

  // The selection moved, by the user's hand or by select().
  Event<void()> on_sel_change;

  // Moves the selection and tells on_sel_change, as a click on a cell does.
  void select(int at_row, int at_col);

 private:
  std::size_t place(int at_row, int at_col) const;

  int rows_;
  int columns_;
};

}  // namespace lineweir
