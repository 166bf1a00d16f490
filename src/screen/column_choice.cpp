#include "screen/column_choice.h"

#include <string>
#include <utility>

#include "base/number_reply.h"
#include "base/text.h"
#include "screen/display_options.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {
ColumnChoice::ColumnChoice(ConsoleState& state, DisplayOptions& display)
    : state_(state), display_(display) {
  DisplayDataForm& form = state.DisplayOptionForm;
  form.CheckItem.wire_each([this](CheckBox& box) {
    wire(box.on_click, state_.trace, "DisplayOptionForm_CheckItem_Click",
         [this, column = box.index()] { CheckItem_Click(column); });
  });
  form.WidthText.wire_each([this](TextBox& box) {
    const int column = box.index();
    wire(
        box.on_lost_focus, state_.trace, "DisplayOptionForm_WidthText_LostFocus",
        [this, column] { WidthText_LostFocus(column); },
        [this, column](const Failure&) { display_.fill_width_box(column); });
  });
  wire(form.List1.on_drag, state_.trace, "DisplayOptionForm_List1_MouseMove",
       [this](int from, int to) { List1_Drag(from, to); });
}

void ColumnChoice::CheckItem_Click(int Index) {
  if (Index < first_optional_column) return;
  DisplayDataForm& form = state_.DisplayOptionForm;
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
}

void ColumnChoice::WidthText_LostFocus(int Index) {
  if (display_.ColumnsLocked) return;
  if (!display_.width_box_untouched(Index)) take_width(Index);
  display_.RefreshColumnOrder();
}

void ColumnChoice::take_width(int column) {
  const double typed = whole_number_in(state_.DisplayOptionForm.WidthText(column).text.get());
  display_.set_width(column, state_.scale.design_width(whole_16_bits(typed)));
  display_.took_width_box(column);
}

void ColumnChoice::List1_Drag(int from, int to) {
  ListBox& list = state_.DisplayOptionForm.List1;
  if (from < 0 || to < 0 || from >= list.list_count() || to >= list.list_count()) return;
  std::vector<std::string> headings = list.list;
  for (int place = from; place != to;) {
    const int next = place + (to > place ? 1 : -1);
    std::swap(headings[static_cast<std::size_t>(place)], headings[static_cast<std::size_t>(next)]);
    place = next;
  }
  list.list = headings;
  list.list_index = to;
}

}  // namespace lineweir
