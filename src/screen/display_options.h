#pragma once

#include <string_view>
#include <vector>

#include "core/settings_record.h"
#include "screen/columns.h"

namespace lineweir {

struct Console;

// Which columns the rows show, in which order and how wide.
class DisplayOptions {
 public:
  explicit DisplayOptions(Console& console);

  // Columns 2 to 12 by number less 2, as the settings hold them. A width is that of design size.
  ColumnNumbers ColumnShown{};
  ColumnNumbers ColumnWidth{};
  ColumnNumbers ColumnOrder{};

  // While it is set RefreshColumnOrder does nothing.
  bool ColumnsLocked = false;

  // The columns shown, in their order on the screen: the line's number, its status, and those of
  // List1.
  std::vector<int> ColumnsInUse;

  // Wider while the rows show line names.
  int number_column_width = column_rules[number_column].width;

  // The columns of a first start.
  void NewColumnSetup();

  // Puts the stored columns on the form and the screen.
  void SetDisplayOptions();

  // TextWrit_RefreshColumnOrder: applies order, visibility and widths.
  void RefreshColumnOrder();

  // Shows the columns' present widths on the screen in the form's boxes, 0 for a hidden one.
  void fill_width_boxes();

  // The form's present choice, for the settings.
  void collect();

  int width_of(int column) const;
  void set_heading(int column, std::string_view heading);

 private:
  void fill_list();

  Console& console_;
};

}  // namespace lineweir
