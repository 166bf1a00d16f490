#include "screen/display_options.h"

#include <array>

#include "core/console.h"
#include "core/guard.h"
#include "screen/columns.h"

namespace lineweir {
namespace {

constexpr int first_optional_column = 2;
constexpr std::array first_columns = {time_column, name_column, city_column, comments_column};

std::size_t stored_place(int column) {
  return static_cast<std::size_t>(column - first_optional_column);
}

}  // namespace

DisplayOptions::DisplayOptions(Console& console) : console_(console) {
  ColumnOrder.fill(column_not_listed);
  for (int column = first_optional_column; column < column_count; ++column) {
    ColumnWidth[stored_place(column)] = column_rules[static_cast<std::size_t>(column)].width;
  }
}

void DisplayOptions::NewColumnSetup() {
  guard(console_, "Lineweir_NewColumnSetup", [&] {
    int place = 0;
    for (const int column : first_columns) {
      ColumnShown[stored_place(column)] = -1;
      ColumnWidth[stored_place(column)] = column_rules[static_cast<std::size_t>(column)].width;
      ColumnOrder[stored_place(column)] = place++;
    }
  });
}

void DisplayOptions::SetDisplayOptions() {
  guard(console_, "Lineweir_SetDisplayOptions", [&] {
    DisplayOptionWindow& form = console_.DisplayOptionForm;
    ColumnsLocked = true;
    for (int column = first_optional_column; column < column_count; ++column) {
      const std::size_t place = stored_place(column);
      const bool shown = ColumnShown[place] != 0;
      form.CheckItem(column).value = shown ? 1 : 0;
      form.WidthText(column).enabled = shown;
      form.WidthText(column).text = shown ? std::to_string(ColumnWidth[place]) : "";
    }
    fill_list();
  });
  ColumnsLocked = false;
  RefreshColumnOrder();
}

void DisplayOptions::fill_list() {
  DisplayOptionWindow& form = console_.DisplayOptionForm;
  std::vector<std::string> headings;
  for (int column = first_optional_column; column < column_count; ++column) {
    const int place = ColumnOrder[stored_place(column)];
    if (place < 0 || place >= optional_column_count) continue;
    if (ColumnShown[stored_place(column)] == 0) continue;
    while (static_cast<int>(headings.size()) <= place) headings.emplace_back("/");
    headings[static_cast<std::size_t>(place)] = form.CheckItem(column).caption;
  }
  form.List1.list = headings;
}

void DisplayOptions::RefreshColumnOrder() {
  if (ColumnsLocked) return;
  guard(console_, "TextWrit_RefreshColumnOrder", [&] {
    ColumnsInUse = {number_column, status_column};
    for (const std::string& heading : console_.DisplayOptionForm.List1.list.get()) {
      for (int column = first_optional_column; column < column_count; ++column) {
        if (console_.Lineweir.CaptionLabel(column).caption == heading) {
          ColumnsInUse.push_back(column);
        }
      }
    }
    console_.layout.lay_out_columns();
    console_.rows.DrawMark();
  });
}

void DisplayOptions::fill_width_boxes() {
  for (int column = first_optional_column; column < column_count; ++column) {
    const Label& label = console_.Lineweir.column_labels(column)(0);
    console_.DisplayOptionForm.WidthText(column).text =
        std::to_string(label.visible ? label.width.get() : 0);
  }
}

void DisplayOptions::collect() {
  const DisplayOptionWindow& form = console_.DisplayOptionForm;
  for (int column = first_optional_column; column < column_count; ++column) {
    const std::size_t place = stored_place(column);
    ColumnShown[place] = form.CheckItem(column).value == 1 ? -1 : 0;
    const int listed = form.List1.find_item(form.CheckItem(column).caption.get());
    ColumnOrder[place] = listed < 0 ? column_not_listed : listed;
  }
}

int DisplayOptions::width_of(int column) const {
  if (column >= first_optional_column) return ColumnWidth[stored_place(column)];
  return column == number_column ? number_column_width : column_rules[status_column].width;
}

void DisplayOptions::set_heading(int column, std::string_view heading) {
  console_.Lineweir.CaptionLabel(column).caption = heading;
  console_.DisplayOptionForm.CheckItem(column).caption = heading;
}

}  // namespace lineweir
