#include "clocks/show_data_boxes.h"

#include <string>
#include <utility>

#include "base/text.h"
#include "clocks/past_rows.h"
#include "clocks/show_data_rows.h"
#include "clocks/time_entry.h"
#include "forms/show_data_form.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr std::string_view hourly_hour = "xx";
constexpr const char* show_ends_early =
    "The Show End Time must be later than the Show Start Time.\r\n"
    "           Please make sure you are using a 24 hour clock!\r\n"
    "                           I.E. 1:00 PM = 13:00:00";

bool is_hourly(std::string_view time) { return time.starts_with('x'); }

// How the show's clock tells a time that is typed on the 24-hour clock; empty until it is one.
std::string reading_of(std::string_view typed) {
  std::string shown = plan_time_as_shown(typed);
  return shown == typed ? std::string() : shown;
}

void type_into(TextBox& box, std::string_view text) {
  box.text = text;
  box.caret_to_end();
}

int required_plan_time(std::string_view text) {
  const auto time = plan_time(text);
  if (!time) throw Failure(failure_number::type_mismatch, "Type mismatch");
  return *time;
}

}  // namespace

ShowDataBoxes::ShowDataBoxes(ConsoleState& state) : state_(state) {
  ShowDataForm& form = state.Form2;
  wire(form.StartTime.on_key_press, state_.trace, "Form2_StartTime_KeyPress",
       [this](int& key) { StartTime_KeyPress(key); });
  wire(form.StartTime.on_lost_focus, state_.trace, "Form2_StartTime_LostFocus",
       [this] { StartTime_LostFocus(); });
  wire(form.Text1.on_key_press, state_.trace, "Form2_Text1_KeyPress",
       [this](int& key) { Text1_KeyPress(key); });
  const auto typed = [this] {
    show_on_the_clock();
    if (on_typed) on_typed();
  };
  wire(form.StartTime.on_change, state_.trace, "Form2_StartTime_Change", typed);
  wire(form.Text1.on_change, state_.trace, "Form2_Text1_Change", typed);
  wire(form.Text1.on_got_focus, state_.trace, "Form2_Text1_GotFocus", [this] { Text1_GotFocus(); });
  wire(form.Text1.on_lost_focus, state_.trace, "Form2_Text1_LostFocus",
       [this] { Text1_LostFocus(); });
}

void ShowDataBoxes::show_on_the_clock() {
  ShowDataForm& form = state_.Form2;
  form.StartShown.caption = reading_of(form.StartTime.text);
  form.EndShown.caption = reading_of(form.Text1.text);
}

void ShowDataBoxes::StartTime_KeyPress(int& key) {
  if (key == tab_key) return;
  ShowDataForm& form = state_.Form2;
  const bool was_empty = form.StartTime.text.get().empty();
  const auto typed = typed_time(show_time_entry, form.StartTime.text, std::exchange(key, 0));
  if (!typed) return;
  type_into(form.StartTime, *typed);

  std::string end = form.Text1.text;
  if (!was_empty || !is_hourly(*typed) || !is_begun_time(end)) return;
  end.replace(0, hourly_prefix.size(), hourly_prefix);
  form.Text1.text = end;
}

void ShowDataBoxes::StartTime_LostFocus() {
  ShowDataForm& form = state_.Form2;
  form.Grid1.set_cell(1, row_start_column, trimmed(form.StartTime.text));
}

void ShowDataBoxes::Text1_KeyPress(int& key) {
  if (key == tab_key) return;
  TextBox& box = state_.Form2.Text1;
  const int pressed = std::exchange(key, 0);
  const bool takes_off_prefix = pressed == backspace_key && is_hourly(box.text.get()) &&
                                box.text.get().size() == hourly_prefix.size();
  // The box gets its "xx:" from StartTime alone and keeps it.
  if (pressed == 'x' || pressed == 'X' || takes_off_prefix) return;
  if (const auto typed = typed_time(show_time_entry, box.text, pressed)) type_into(box, *typed);
}

void ShowDataBoxes::Text1_GotFocus() {
  ShowDataForm& form = state_.Form2;
  if (!is_hourly(form.StartTime.text.get())) return;
  std::string end = form.Text1.text;
  if (end.size() > hourly_hour.size()) {
    end.replace(0, hourly_hour.size(), hourly_hour);
  } else {
    end = hourly_prefix;
  }
  type_into(form.Text1, end);
}

void ShowDataBoxes::Text1_LostFocus() {
  ShowDataForm& form = state_.Form2;
  const std::string_view start = trimmed(form.StartTime.text);
  const std::string_view end = trimmed(form.Text1.text);
  if (!is_begun_time(start) || !is_begun_time(end)) return;
  if (required_plan_time(end) >= required_plan_time(start)) return;
  form.Text1.text = "";
  state_.messages.ShowMessage(show_ends_early);
}

}  // namespace lineweir
