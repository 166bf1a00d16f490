#include "callerdata/caller_memory.h"

#include "callerdata/entry_fields.h"
#include "core/console.h"
#include "core/guard.h"

namespace lineweir {
namespace {

constexpr int key_escape = 27;

void fill(TextBox& box, std::string_view known) {
  if (!box.enabled) return;
  box.text = filled_in(box.text.get(), known);
  box.caret_to_end();
}

}  // namespace

CallerMemory::CallerMemory(Console& console) : console_(console) {
  CallerDataForm& form = console.Form4;
  form.TheText(phone_number_entry).on_change = [this] { TheText6_Change(); };
  form.MemoryFill.on_click = [this] { MemoryFill_Click(); };
}

void CallerMemory::TheText6_Change() {
  guard(console_, "Form4_TheText_Change",
        [&] { look_up(console_.Form4.TheText(phone_number_entry).text.get()); });
}

void CallerMemory::number_arrived(int line, std::string_view number) {
  if (line == console_.caller_data.held_line()) look_up(number);
}

void CallerMemory::look_up(std::string_view number) {
  hide();
  if (!console_.call_log.chosen() || number_forms(number).empty()) return;
  CallerDataForm& form = console_.Form4;
  std::optional<CallerHistory> history;
  attempt(
      [&] {
        history = find_history(console_.call_log.recordset(), console_.services.letters, number);
      },
      [&](const Failure& failure) {
        // What keeps the log from telling is told in its place.
        report_failure(console_, "CallerMemory", failure);
        form.MemoryLabel.caption = description_of(console_, failure);
        form.MemoryLabel.visible = true;
      });
  if (!history) return;
  offered_ = *history;
  form.MemoryLabel.caption = history_text(offered_);
  form.MemoryLabel.visible = true;
  form.MemoryFill.visible = !offered_.name.empty() || !offered_.city.empty();
}

void CallerMemory::key_pressed(int& key) {
  if (key < ' ' && key != key_escape) return;
  const bool offered = console_.Form4.MemoryLabel.visible;
  hide();
  if (key == key_escape && offered) key = 0;
}

void CallerMemory::hide() {
  console_.Form4.MemoryLabel.visible = false;
  console_.Form4.MemoryFill.visible = false;
}

void CallerMemory::MemoryFill_Click() {
  guard(console_, "Form4_MemoryFill_Click", [&] {
    CallerDataForm& form = console_.Form4;
    hide();
    fill(form.TheText(name_entry), offered_.name);
    fill(form.TheText(city_entry), offered_.city);
    for (int entry = 1; entry <= caller_text_count; ++entry) {
      TextBox& box = form.TheText(entry);
      if (!box.enabled || !box.text.get().empty()) continue;
      return box.set_focus();
    }
    form.Command3D1.set_focus();
  });
}

}  // namespace lineweir
