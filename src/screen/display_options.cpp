#include "screen/display_options.h"

#include <algorithm>

#include "base/integer16.h"
#include "forms/columns.h"
#include "screen/column_room.h"
#include "screen/row_display.h"
#include "screen/row_layout.h"
#include "screen/visible_rows.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {
namespace {

constexpr std::string_view gap_entry = "/";

std::size_t stored_place(int column) {
  return static_cast<std::size_t>(column - first_optional_column);
}

}  // namespace

DisplayOptions::DisplayOptions(ConsoleState& state, RowDisplay& rows,
                               const VisibleRows& visible_rows)
    : state_(state), rows_(rows), visible_rows_(visible_rows) {
  ColumnOrder.fill(column_not_listed);
  for (int column = first_optional_column; column < column_count; ++column) {
    ColumnWidth[stored_place(column)] = column_rules[static_cast<std::size_t>(column)].width;
  }
}

void DisplayOptions::NewColumnSetup() {
  guard(state_.trace, "Lineweir_NewColumnSetup", [&] {
    int place = 0;
    for (int column = first_optional_column; column < column_count; ++column) {
      const ColumnRule& rule = column_rules[static_cast<std::size_t>(column)];
      if (!rule.shown_at_first) continue;
      ColumnShown[stored_place(column)] = -1;
      ColumnWidth[stored_place(column)] = rule.width;
      ColumnOrder[stored_place(column)] = place++;
      state_.DisplayOptionForm.CheckItem(column).value = 1;
    }
  });
}

void DisplayOptions::restore(const ColumnNumbers& shown, const ColumnNumbers& widths,
                             const ColumnNumbers& order) {
  ColumnShown = shown;
  ColumnWidth = widths;
  ColumnOrder = order;
  for (int column = first_optional_column; column < column_count; ++column) {
    int& width = ColumnWidth[stored_place(column)];
    if (width < 0) width = column_rules[static_cast<std::size_t>(column)].width;
  }
}

void DisplayOptions::SetDisplayOptions() {
  guard(state_.trace, "Lineweir_SetDisplayOptions", [&] {
    const ColumnsLock lock(*this);
    DisplayDataForm& form = state_.DisplayOptionForm;
    fill_width_box(number_column);
    fill_width_box(status_column);
    for (int column = first_optional_column; column < column_count; ++column) {
      const std::size_t place = stored_place(column);
      const bool shown = ColumnShown[place] != 0 && ColumnOrder[place] != column_not_listed;
      form.CheckItem(column).value = shown ? 1 : 0;
      form.WidthText(column).enabled = shown;
      if (shown) {
        fill_width_box(column);
      } else {
        clear_width_box(column);
      }
    }
    fill_list();
  });
  RefreshColumnOrder();
}

void DisplayOptions::fill_list() {
  DisplayDataForm& form = state_.DisplayOptionForm;
  std::vector<std::string> headings;
  std::vector<std::string> without_place;
  for (int column = first_optional_column; column < column_count; ++column) {
    if (form.CheckItem(column).value == 0) continue;
    const std::string& heading = form.CheckItem(column).caption;
    const int place = ColumnOrder[stored_place(column)];
    const bool in_list = place >= 0 && place < optional_column_count;
    while (in_list && static_cast<int>(headings.size()) <= place) headings.emplace_back(gap_entry);
    if (!in_list || headings[static_cast<std::size_t>(place)] != gap_entry) {
      without_place.push_back(heading);
    } else {
      headings[static_cast<std::size_t>(place)] = heading;
    }
  }
  for (std::string& heading : without_place) {
    // The list never has more entries than there are columns, so that each entry is a place.
    if (headings.size() < optional_column_count) {
      headings.push_back(std::move(heading));
    } else {
      *std::ranges::find(headings, gap_entry) = std::move(heading);
    }
  }
  form.List1.list = headings;
}

void DisplayOptions::RefreshColumnOrder() {
  if (ColumnsLocked) return;
  guard(state_.trace, "TextWrit_RefreshColumnOrder", [&] {
    ColumnsInUse = {number_column, status_column};
    for (const int column : listed_columns()) {
      if (column >= first_optional_column) ColumnsInUse.push_back(column);
    }
    lay_out_columns(state_, visible_rows_, *this);
    rows_.DrawMark();
  });
}

std::vector<int> DisplayOptions::listed_columns() const {
  const DisplayDataForm& form = state_.DisplayOptionForm;
  std::vector<int> columns;
  const auto free_column = [&](const std::string& heading, bool checked) {
    for (int column = first_optional_column; column < column_count; ++column) {
      if (!(state_.Lineweir.CaptionLabel(column).caption == heading)) continue;
      if ((form.CheckItem(column).value == 1) != checked) continue;
      if (std::ranges::find(columns, column) == columns.end()) return column;
    }
    return -1;
  };
  // The user's own heading may be that of another column: each of the two has an entry, if it is
  // checked.
  for (const std::string& heading : form.List1.list.get()) {
    const int checked = free_column(heading, true);
    columns.push_back(checked >= 0 ? checked : free_column(heading, false));
  }
  return columns;
}

int DisplayOptions::listed_place(int column) const {
  const std::vector<int> columns = listed_columns();
  const auto place = std::ranges::find(columns, column);
  return place == columns.end() ? -1 : static_cast<int>(place - columns.begin());
}

void DisplayOptions::fill_width_boxes() {
  for (int column = 0; column < column_count; ++column) {
    const int width = in_use(column) ? state_.scale.across(width_of(column)) : 0;
    show_in_width_box(column, std::to_string(width));
  }
}

bool DisplayOptions::in_use(int column) const {
  return std::ranges::find(ColumnsInUse, column) != ColumnsInUse.end();
}

void DisplayOptions::tell_room() {
  std::vector<int> widths;
  for (const int column : ColumnsInUse) widths.push_back(width_of(column));
  const int room = layout_range(state_.program.VisibleLines).strip_width - first_column_gap;
  std::string names;
  for (std::size_t i = columns_with_room(widths, room); i < widths.size(); ++i) {
    if (widths[i] == 0) continue;
    if (!names.empty()) names += ", ";
    names += state_.DisplayOptionForm.CheckItem(ColumnsInUse[i]).caption;
  }
  state_.DisplayOptionForm.RoomLabel.caption =
      names.empty() ? names : "No room in the rows for: " + names;
}

void DisplayOptions::fill_width_box(int column) {
  show_in_width_box(column, std::to_string(state_.scale.across(width_of(column))));
}

void DisplayOptions::clear_width_box(int column) { show_in_width_box(column, ""); }

void DisplayOptions::show_in_width_box(int column, std::string_view width) {
  shown_widths_[static_cast<std::size_t>(column)] = width;
  state_.DisplayOptionForm.WidthText(column).text = width;
}

bool DisplayOptions::width_box_untouched(int column) const {
  return state_.DisplayOptionForm.WidthText(column).text ==
         shown_widths_[static_cast<std::size_t>(column)];
}

void DisplayOptions::took_width_box(int column) {
  shown_widths_[static_cast<std::size_t>(column)] =
      state_.DisplayOptionForm.WidthText(column).text.get();
}

void DisplayOptions::collect() {
  const DisplayDataForm& form = state_.DisplayOptionForm;
  for (int column = first_optional_column; column < column_count; ++column) {
    const std::size_t place = stored_place(column);
    ColumnShown[place] = form.CheckItem(column).value == 1 ? -1 : 0;
    const int listed = listed_place(column);
    ColumnOrder[place] = listed < 0 ? column_not_listed : listed;
  }
}

int DisplayOptions::width_of(int column) const {
  if (column >= first_optional_column) return ColumnWidth[stored_place(column)];
  return column == number_column ? number_column_width : status_column_width;
}

void DisplayOptions::set_width(int column, int width) {
  if (width < 0) throw Failure(failure_number::invalid_argument, "Invalid property value");
  const int checked = integer16(width);
  if (column >= first_optional_column) {
    ColumnWidth[stored_place(column)] = checked;
  } else {
    (column == number_column ? number_column_width : status_column_width) = checked;
  }
}

void DisplayOptions::set_heading(int column, std::string_view heading) {
  DisplayDataForm& form = state_.DisplayOptionForm;
  if (const int listed = listed_place(column); listed >= 0) form.List1.set_item(listed, heading);
  state_.Lineweir.CaptionLabel(column).caption = heading;
  form.CheckItem(column).caption = heading;
  tell_room();
}

}  // namespace lineweir
