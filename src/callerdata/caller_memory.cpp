#include "callerdata/caller_memory.h"

#include "callerdata/call_log.h"
#include "elements/key_characters.h"
#include "forms/entry_fields.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {

CallerMemory::CallerMemory(ConsoleState& state, CallLog& call_log)
    : state_(state), call_log_(call_log) {
  CallerDataForm& form = state.Form4;
  wire(form.MemoryFill.on_click, state_.trace, "Form4_MemoryFill_Click",
       [this] { MemoryFill_Click(); });
}

bool CallerMemory::on() const { return call_log_.chosen(); }

void CallerMemory::look_up() {
  hide();
  const std::string& number = state_.Form4.TheText(phone_number_entry).text;
  if (!on() || number_forms(number).empty()) return;
  CallerDataForm& form = state_.Form4;
  std::optional<CallerHistory> history;
  attempt([&] { history = find_history(call_log_.recordset(), state_.services.letters, number); },
          [&](const Failure& failure) {
            // What keeps the log from telling is told in its place.
            report_failure(state_.trace, "Form4_TheText_Change", failure);
            form.MemoryLabel.caption = description_of(state_.services.letters, failure);
            form.MemoryLabel.visible = true;
          });
  if (!history) return;
  history_ = *history;
  form.MemoryLabel.caption = history_text(history_);
  form.MemoryLabel.visible = true;
  offer();
}

void CallerMemory::offer() {
  CallerDataForm& form = state_.Form4;
  if (!form.MemoryLabel.visible) return;
  std::string fields;
  for (const int entry : fillable()) {
    fields += (fields.empty() ? "" : " and ") + std::string(entry_field(entry).filled_in_as);
  }
  form.MemoryFill.caption = "&Fill in " + fields;
  form.MemoryFill.visible = !fields.empty();
}

std::vector<int> CallerMemory::fillable() const {
  std::vector<int> entries;
  for (int entry = 1; entry <= entry_field_count; ++entry) {
    const TextBox& box = state_.Form4.TheText(entry);
    if (box.enabled && completes(box.text.get(), known(entry))) entries.push_back(entry);
  }
  return entries;
}

const std::string& CallerMemory::known(int entry) const {
  return history_.known[static_cast<std::size_t>(entry - 1)];
}

void CallerMemory::key_pressed(int& key) {
  if (key < ' ' && key != escape_key) return;
  const bool offered = state_.Form4.MemoryLabel.visible;
  hide();
  if (key == escape_key && offered) key = 0;
}

void CallerMemory::hide() {
  state_.Form4.MemoryLabel.visible = false;
  state_.Form4.MemoryFill.visible = false;
}

void CallerMemory::MemoryFill_Click() {
  CallerDataForm& form = state_.Form4;
  const std::vector<int> entries = fillable();
  hide();
  for (const int entry : entries) {
    form.TheText(entry).text = known(entry);
    form.TheText(entry).caret_to_end();
  }
  for (int entry = 1; entry <= entry_field_count; ++entry) {
    TextBox& box = form.TheText(entry);
    if (!box.enabled || !box.text.get().empty()) continue;
    return box.set_focus();
  }
  form.Command3D1.set_focus();
}

}  // namespace lineweir
