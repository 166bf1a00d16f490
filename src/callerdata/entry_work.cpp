#include "callerdata/entry_work.h"

#include "base/text.h"
#include "callerdata/entry_fit.h"

namespace lineweir {

std::set<int> EntryWork::follow(const EntryTexts& has) {
  std::set<int> changed_elsewhere;
  for (std::size_t i = 0; i < has.size(); ++i) {
    const bool follows = !touched(i);
    if (!follows && has[i] != had[i] && has[i] != typed[i]) {
      changed_elsewhere.insert(static_cast<int>(i) + 1);
    }
    if (follows) typed[i] = has[i];
    had[i] = has[i];
  }
  return changed_elsewhere;
}

EntryTexts shown_texts(const EntryTexts& record, const EntryTexts& row) {
  EntryTexts shown;
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const auto held = trimmed(record[i]);
    shown[i] = held.empty() ? trimmed(row[i]) : held;
  }
  std::string& number = shown[phone_number_entry - 1];
  number = number_within(number, entry_room(phone_number_entry));
  return shown;
}

}  // namespace lineweir
