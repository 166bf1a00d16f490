#include "screen/column_choice.h"

#include <string>
#include <utility>

#include "base/number_reply.h"
#include "base/text.h"
#include "screen/display_options.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {
ColumnChoice::ColumnChoice(ConsoleState& state, DisplayOptions& display)
    : state_(state), display_(display) {
  DisplayOptionWindow& form = state.DisplayOptionForm;
  form.CheckItem.wire([this](CheckBox& box) {
    box.on_click = [this, column = box.index()] { CheckItem_Click(column); };
  });
  form.WidthText.wire([this](TextBox& box) {
    box.on_lost_focus = [this, column = box.index()] { WidthText_LostFocus(column); };
  });
  form.List1.on_drag = [this](int from, int to) { List1_Drag(from, to); };
}

void ColumnChoice::CheckItem_Click(int Index) {
  guard(state_.trace, "DisplayOptionForm_CheckItem_Click", [&] {
    if (Index < first_optional_column) return;
    DisplayOptionWindow& form = state_.DisplayOptionForm;
    const std::string heading = form.CheckItem(Index).caption;
    const int listed = display_.listed_place(Index);
    const bool checked = form.CheckItem(Index).value == 1;
    form.WidthText(Index).enabled = checked;
    if (checked) {
      display_.fill_width_box(Index);
      if (listed < 0) form.List1.add_item(heading);
    } else {
      display_.clear_width_box(Index);
      if (listed >= 0) form.List1.remove_item(listed);
    }
    display_.RefreshColumnOrder();
    display_.collect();
  });
}

void ColumnChoice::WidthText_LostFocus(int Index) {
  DisplayOptions& display = display_;
  if (display.ColumnsLocked) return;
  attempt(
      [&] {
        if (!display.width_box_untouched(Index)) take_width(Index);
        display.RefreshColumnOrder();
      },
      [&](const Failure& failure) {
        report_failure(state_.trace, "DisplayOptionForm_WidthText_LostFocus", failure);
        display.fill_width_box(Index);
      });
}

void ColumnChoice::take_width(int column) {
  const double typed = whole_number_in(state_.DisplayOptionForm.WidthText(column).text.get());
  display_.set_width(column, state_.scale.design_width(whole_16_bits(typed)));
  display_.took_width_box(column);
}

void ColumnChoice::List1_Drag(int from, int to) {
  guard(state_.trace, "DisplayOptionForm_List1_MouseMove", [&] {
    ListBox& list = state_.DisplayOptionForm.List1;
    if (from < 0 || to < 0 || from >= list.list_count() || to >= list.list_count()) return;
    std::vector<std::string> headings = list.list;
    for (int place = from; place != to;) {
      const int next = place + (to > place ? 1 : -1);
      std::swap(headings[static_cast<std::size_t>(place)],
                headings[static_cast<std::size_t>(next)]);
      place = next;
    }
    list.list = headings;
    list.list_index = to;
  });
}

}  // namespace lineweir
