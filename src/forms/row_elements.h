#pragma once

#include <vector>

#include "elements/control_array.h"
#include "elements/label.h"
#include "elements/picture.h"
#include "forms/columns.h"

namespace lineweir {

// The elements of the rows, one of each array a line, and the headings above them.
struct RowElements {
  explicit RowElements(Form& form);

  ControlArray<Label> CaptionLabel;
  Label Label9;
  Label Label10;

  ControlArray<Picture> DataRow;
  ControlArray<Picture> DataRowImage;

  // The labels of each column, numbered as the columns are, in whatever order they are shown; and
  // those by name that are asked for so.
  std::vector<ControlArray<Label>> columns;
  ControlArray<Label>& LineNumb = columns[number_column];
  ControlArray<Label>& LineStatus = columns[status_column];
  ControlArray<Label>& LineTime = columns[time_column];
  ControlArray<Label>& LineName = labels_of(CallerField::CallerName);
  ControlArray<Label>& LineCity = labels_of(CallerField::City);
  ControlArray<Label>& LineComments = labels_of(CallerField::Comments);
  ControlArray<Label>& LineUser = labels_of(user_named_field);

  // Element k belongs to row k / column_count and stands at a column's edge.
  ControlArray<Picture> MyMark;

  ControlArray<Picture> OnHybrid1;
  ControlArray<Picture> OnHybrid2;
  ControlArray<Picture> CIcon1;
  ControlArray<Picture> CIcon2;

  // A column that isn't there is a Failure of number 9.
  ControlArray<Label>& column_labels(int column);
  ControlArray<Label>& labels_of(CallerField field) { return column_labels(column_of(field)); }

  // A row's labels as items counted from 1, in the order of the columns.
  Label& RowControls(int line, int item) { return column_labels(item - 1)(line); }

  // Empties the captions of a row's items from `first` on.
  void blank_row_controls(int line, int first);

  // What a row shows that has just been made: its number, and nothing on its line.
  void show_idle(int line);

  // Loads all of a row's elements, hidden; unloads them.
  void load_row(int line);
  void unload_row(int line);
};

}  // namespace lineweir
