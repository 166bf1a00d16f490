#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "forms/columns.h"
#include "state/settings_record.h"

namespace lineweir {

class RowDisplay;
class VisibleRows;
struct ConsoleState;

// Which columns the rows show, in which order and how wide.
class DisplayOptions {
 public:
  DisplayOptions(ConsoleState& state, RowDisplay& rows, const VisibleRows& visible_rows);

  // Columns 2 to 12 by number less 2, as the settings and the user's profile hold them. A width is
  // that of design size.
  ColumnNumbers ColumnShown{};
  ColumnNumbers ColumnWidth{};
  ColumnNumbers ColumnOrder{};

  // While it is set RefreshColumnOrder and WidthText_LostFocus do nothing.
  bool ColumnsLocked = false;

  // The columns shown, in their order on the screen: the line's number, its status, and those of
  // List1.
  std::vector<int> ColumnsInUse;

  // Wider while the rows show line names.
  int number_column_width = column_rules[number_column].width;
  int status_column_width = column_rules[status_column].width;

  // The columns of a first start.
  void NewColumnSetup();

  // Takes stored columns. A width that can't be is that of a first start.
  void restore(const ColumnNumbers& shown, const ColumnNumbers& widths, const ColumnNumbers& order);

  // Puts the stored columns on the form and the screen. A column without a place isn't shown; one
  // whose place isn't in the list, or is that of another, stands behind the others.
  void SetDisplayOptions();

  // TextWrit_RefreshColumnOrder: applies order, visibility and widths.
  void RefreshColumnOrder();

  // Shows the columns' present widths on the screen in the form's boxes, 0 for a hidden one.
  void fill_width_boxes();

  // Tells on the form which columns in use the rows have no room for.
  void tell_room();

  // The form's present choice, for the settings.
  void collect();

  // The width of a column at design size. Setting one that doesn't fit into 16 bits is a Failure of
  // number 6, a negative one a Failure of number 5.
  int width_of(int column) const;
  void set_width(int column, int width);

  // Shows in the box of a column how wide it is on the screen as it now stands.
  void fill_width_box(int column);
  void clear_width_box(int column);
  // Whether the box still holds what was last shown in it.
  bool width_box_untouched(int column) const;
  // What is in the box is the column's width now.
  void took_width_box(int column);

  // The entry of List1 that stands for a column, or -1.
  int listed_place(int column) const;

  // Gives a column another heading wherever it has one.
  void set_heading(int column, std::string_view heading);

 private:
  void fill_list();
  bool in_use(int column) const;
  // By entry of List1 its column, or -1.
  std::vector<int> listed_columns() const;
  void show_in_width_box(int column, std::string_view width);

  ConsoleState& state_;
  RowDisplay& rows_;
  const VisibleRows& visible_rows_;
  std::array<std::string, column_count> shown_widths_;
};

// Keeps the columns as they are while lines come and go.
class ColumnsLock {
 public:
  explicit ColumnsLock(DisplayOptions& display)
      : display_(display), former_(std::exchange(display.ColumnsLocked, true)) {}
  ~ColumnsLock() { display_.ColumnsLocked = former_; }
  ColumnsLock(const ColumnsLock&) = delete;
  ColumnsLock& operator=(const ColumnsLock&) = delete;

 private:
  DisplayOptions& display_;
  bool former_;
};

}  // namespace lineweir
