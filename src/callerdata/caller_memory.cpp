#include "callerdata/caller_memory.h"

#include "callerdata/call_log.h"
#include "callerdata/known_caller_text.h"
#include "callerdata/known_callers.h"
#include "elements/key_characters.h"
#include "forms/entry_fields.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/wire.h"

namespace lineweir {

CallerMemory::CallerMemory(ConsoleState& state, CallLog& call_log, KnownCallers& known)
    : state_(state), call_log_(call_log), known_(known) {
  CallerDataForm& form = state.Form4;
  wire(form.MemoryFill.on_click, state_.trace, "Form4_MemoryFill_Click",
       [this] { MemoryFill_Click(); });
  wire(form.AskTimer.on_timer, state_.trace, "Form4_AskTimer_Timer", [this] { AskTimer_Timer(); });
}

CallerDataForm::Memory CallerMemory::kind() const {
  using enum CallerDataForm::Memory;
  if (known_.remembers()) return Server;
  return call_log_.chosen() ? Log : None;
}

const std::string& CallerMemory::number() const {
  return state_.Form4.TheText(phone_number_entry).text;
}

void CallerMemory::look_up() {
  hide();
  logged_.reset();
  asked_ = false;
  state_.Form4.AskTimer.enabled = false;
  show_flag();
  if (!on() || number_forms(number()).empty()) return;
  if (call_log_.chosen()) look_into_log();
  show_history();
  ask_soon();
}

void CallerMemory::look_into_log() {
  CallerDataForm& form = state_.Form4;
  attempt([&] { logged_ = find_history(call_log_.recordset(), state_.services.letters, number()); },
          [&](const Failure& failure) {
            // What keeps the log from telling is told in its place.
            report_failure(state_.trace, "Form4_TheText_Change", failure);
            form.MemoryLabel.caption = description_of(state_.services.letters, failure);
            form.MemoryLabel.visible = true;
          });
}

void CallerMemory::ask_soon() {
  if (known_.served()) state_.Form4.AskTimer.enabled = true;
}

void CallerMemory::AskTimer_Timer() {
  CallerDataForm& form = state_.Form4;
  form.AskTimer.enabled = false;
  if (!form.loaded() || number_forms(number()).empty()) return;
  asked_ = true;
  known_.ask(number());
}

void CallerMemory::known_changed() {
  CallerDataForm& form = state_.Form4;
  const bool answers_again = known_.served() && !was_served_;
  was_served_ = known_.served();
  if (!form.loaded()) return;
  if (form.memory() != kind()) form.show_memory(kind());
  if (answers_again) ask_soon();
  if (!known_.served()) {
    form.AskTimer.enabled = false;
    asked_ = false;
  }
  show_flag();
  const bool answered = asked_ && known_.of_number(number()) != nullptr;
  if (answered) asked_ = false;
  // Whoever has typed on since has declined what was shown.
  if (!answered && !form.MemoryLabel.visible) return;
  if (richer(logged_, known_.of_number(number()))) return show_history();
  if (!known_.remembers()) hide();
}

void CallerMemory::show_history() {
  const auto history = richer(logged_, known_.of_number(number()));
  if (!history) return;
  CallerDataForm& form = state_.Form4;
  history_ = *history;
  form.MemoryLabel.caption = history_text(history_);
  form.MemoryLabel.visible = true;
  offer();
}

void CallerMemory::show_flag() {
  CallerDataForm& form = state_.Form4;
  const bool is_number = !number_forms(number()).empty();
  form.FlagCaller.visible = known_.remembers() && state_.program.CallerFlagAllowed;
  form.FlagCaller.enabled = is_number && known_.served();
  const CallerKnown* known = is_number ? known_.of_number(number()) : nullptr;
  const CallerFlag flag = known == nullptr ? CallerFlag::None : known->flag;
  form.FlagLabel.visible = flag != CallerFlag::None;
  if (flag == CallerFlag::None) return;
  form.FlagLabel.caption = flag_text(*known);
  form.FlagLabel.back_color = flag_color(flag);
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
