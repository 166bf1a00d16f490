#include "screen/column_choice.h"

#include <string>
#include <utility>

#include "clocks/number_reply.h"
#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"

namespace lineweir {
namespace {

// The characters of SettingsRecord::UserFieldName.
constexpr std::size_t heading_length = 30;
constexpr const char* title_prompt = "Please input the new title for the user field!";
constexpr const char* database_question =
    "Do you wish to change the name of the field in the currently open database as well?";

}  // namespace

ColumnChoice::ColumnChoice(Console& console) : console_(console) {
  DisplayOptionWindow& form = console.DisplayOptionForm;
  console.Lineweir.DisplayDataOptionsMenu.on_click = [this] { DisplayDataOptionsMenu_Click(); };
  form.CheckItem.wire([this](CheckBox& box) {
    box.on_click = [this, column = box.index()] { CheckItem_Click(column); };
  });
  form.WidthText.wire([this](TextBox& box) {
    box.on_lost_focus = [this, column = box.index()] { WidthText_LostFocus(column); };
  });
  form.List1.on_drag = [this](int from, int to) { List1_Drag(from, to); };
  form.UserRename.on_click = [this] { UserRename_Click(); };
}

void ColumnChoice::DisplayDataOptionsMenu_Click() {
  guard(console_, "Lineweir_DisplayDataOptionsMenu_Click", [&] {
    for (const int column : console_.display.ColumnsInUse) console_.display.fill_width_box(column);
    console_.group_choice.select_present_group();
    console_.DisplayOptionForm.show();
  });
}

void ColumnChoice::CheckItem_Click(int Index) {
  guard(console_, "DisplayOptionForm_CheckItem_Click", [&] {
    if (Index < first_optional_column) return;
    DisplayOptionWindow& form = console_.DisplayOptionForm;
    const std::string heading = form.CheckItem(Index).caption;
    const int listed = console_.display.listed_place(Index);
    const bool checked = form.CheckItem(Index).value == 1;
    form.WidthText(Index).enabled = checked;
    if (checked) {
      console_.display.fill_width_box(Index);
      if (listed < 0) form.List1.add_item(heading);
    } else {
      console_.display.clear_width_box(Index);
      if (listed >= 0) form.List1.remove_item(listed);
    }
    console_.display.RefreshColumnOrder();
    console_.display.collect();
  });
}

void ColumnChoice::WidthText_LostFocus(int Index) {
  DisplayOptions& display = console_.display;
  if (display.ColumnsLocked) return;
  attempt(
      [&] {
        if (!display.width_box_untouched(Index)) take_width(Index);
        display.RefreshColumnOrder();
      },
      [&](const Failure& failure) {
        report_failure(console_, "DisplayOptionForm_WidthText_LostFocus", failure);
        display.fill_width_box(Index);
      });
}

void ColumnChoice::take_width(int column) {
  const double typed = whole_number_in(console_.DisplayOptionForm.WidthText(column).text.get());
  console_.display.set_width(column, console_.layout.scale().design_width(whole_16_bits(typed)));
  console_.display.took_width_box(column);
}

void ColumnChoice::List1_Drag(int from, int to) {
  guard(console_, "DisplayOptionForm_List1_MouseMove", [&] {
    ListBox& list = console_.DisplayOptionForm.List1;
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

void ColumnChoice::UserRename_Click() {
  guard(console_, "DisplayOptionForm_UserRename_Click", [&] {
    const std::string present = console_.DisplayOptionForm.CheckItem(user_column).caption;
    const auto reply = console_.services.dialogs.ask_input(title_prompt, present);
    if (!reply) return;
    // As the settings can hold it.
    const std::string title(trimmed(left_part(trimmed(*reply), heading_length)));
    if (title.empty() || title == present) return;
    const bool in_log = database_open() && console_.services.dialogs.ask_yes_no(database_question);
    if (!in_log || rename_in_log(title)) console_.display.set_heading(user_column, title);
  });
}

bool ColumnChoice::rename_in_log(const std::string& title) {
  return attempt(
      [&] { console_.call_log.rename_user_field(title); },
      [&](const Failure& failure) {
        report_failure(console_, "DisplayOptionForm_UserRename_Click", failure);
        console_.messages.ShowMessage(std::string(failure.what()) + " The field keeps its title.");
      });
}

bool ColumnChoice::database_open() const {
  return !trimmed(console_.Lineweir.Data1.database_name.get()).empty();
}

}  // namespace lineweir
