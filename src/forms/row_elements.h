#pragma once

#include "elements/control_array.h"
#include "elements/label.h"
#include "elements/picture.h"
#include "forms/columns.h"

namespace lineweir {

inline constexpr int marks_per_row = 13;

// The elements of the rows, one of each array a line, and the headings above them.
struct RowElements {
  explicit RowElements(Form& form);

  ControlArray<Label> CaptionLabel;
  Label Label9;
  Label Label10;

  ControlArray<Picture> DataRow;
  ControlArray<Picture> DataRowImage;

  ControlArray<Label> LineNumb;
  ControlArray<Label> LineStatus;
  ControlArray<Label> LineTime;
  ControlArray<Label> LineName;
  ControlArray<Label> LineStreetAdd;
  ControlArray<Label> LineCity;
  ControlArray<Label> LineState;
  ControlArray<Label> LineZipCode;
  ControlArray<Label> LinePhoneNumber;
  ControlArray<Label> LineStation;
  ControlArray<Label> LineBand;
  ControlArray<Label> LineComments;
  ControlArray<Label> LineUser;

  // Element k belongs to row k / 13 and stands at a column's edge.
  ControlArray<Picture> MyMark;

  ControlArray<Picture> OnHybrid1;
  ControlArray<Picture> OnHybrid2;
  ControlArray<Picture> CIcon1;
  ControlArray<Picture> CIcon2;

  // The labels of a column, numbered as the columns are, in whatever order they are shown.
  ControlArray<Label>& column_labels(int column);

  // A row's labels as items 1 to 13, in the order of the columns 0 to 12.
  Label& RowControls(int line, int item) { return column_labels(item - 1)(line); }

  // Empties the captions of items `first` to 13 of a row.
  void blank_row_controls(int line, int first);

  // What a row shows that has just been made: its number, and nothing on its line.
  void show_idle(int line);

  // Loads all of a row's elements, hidden; unloads them.
  void load_row(int line);
  void unload_row(int line);
};

}  // namespace lineweir
