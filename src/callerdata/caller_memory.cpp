#include "callerdata/caller_memory.h"

#include <utility>

#include "callerdata/entry_fields.h"
#include "core/console.h"
#include "core/guard.h"

namespace lineweir {
namespace {

constexpr int key_escape = 27;

}  // namespace

CallerMemory::CallerMemory(Console& console) : console_(console) {
  CallerDataForm& form = console.Form4;
  form.MemoryFill.on_click = [this] { MemoryFill_Click(); };
}

void CallerMemory::look_up() {
  hide();
  const std::string& number = console_.Form4.TheText(phone_number_entry).text;
  if (!console_.call_log.chosen() || number_forms(number).empty()) return;
  const auto history = find_history(console_.call_log.recordset(), number);
  if (!history) return;
  history_ = *history;
  console_.Form4.MemoryLabel.caption = history_text(history_);
  console_.Form4.MemoryLabel.visible = true;
  offer();
}

void CallerMemory::offer() {
  CallerDataForm& form = console_.Form4;
  if (!form.MemoryLabel.visible) return;
  std::string fields;
  for (const KnownField& field : fillable()) {
    fields += (fields.empty() ? "" : " and ") + std::string(field.title);
  }
  form.MemoryFill.caption = "&Fill in " + fields;
  form.MemoryFill.visible = !fields.empty();
}

std::vector<CallerMemory::KnownField> CallerMemory::fillable() {
  std::vector<KnownField> fields;
  for (KnownField field : {KnownField{name_entry, "name", history_.name},
                           KnownField{city_entry, "city", history_.city}}) {
    const TextBox& box = console_.Form4.TheText(field.entry);
    if (box.enabled && completes(box.text.get(), field.known)) fields.push_back(std::move(field));
  }
  return fields;
}

void CallerMemory::key_pressed(int key) {
  if (key >= ' ' || key == key_escape) hide();
}

void CallerMemory::hide() {
  console_.Form4.MemoryLabel.visible = false;
  console_.Form4.MemoryFill.visible = false;
}

void CallerMemory::MemoryFill_Click() {
  guard(console_, "Form4_MemoryFill_Click", [&] {
    CallerDataForm& form = console_.Form4;
    const std::vector<KnownField> fields = fillable();
    hide();
    for (const KnownField& field : fields) {
      form.TheText(field.entry).text = field.known;
      form.TheText(field.entry).caret_to_end();
    }
    for (int entry = 1; entry <= caller_text_count; ++entry) {
      TextBox& box = form.TheText(entry);
      if (!box.enabled || !box.text.get().empty()) continue;
      return box.set_focus();
    }
    form.Command3D1.set_focus();
  });
}

}  // namespace lineweir
