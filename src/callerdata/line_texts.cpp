#include "callerdata/line_texts.h"

#include "state/console_state.h"

namespace lineweir {
namespace {

void take_out(EntryTexts& texts, const EntryTexts& gone) {
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (texts[i] == gone[i]) texts[i].clear();
  }
}

}  // namespace

EntryTexts LineTexts::of(int line) const {
  Texts texts = standing_on(line);
  if (const auto gone = gone_.find(line); gone != gone_.end()) {
    take_out(texts.record, gone->second.record);
    take_out(texts.row, gone->second.row);
  }
  return shown_texts(texts.record, texts.row);
}

void LineTexts::caller_gone(int line) { gone_[line] = standing_on(line); }

LineTexts::Texts LineTexts::standing_on(int line) const {
  Texts texts;
  for (std::size_t i = 0; i < entry_fields.size(); ++i) {
    const CallerField field = entry_fields[i].field;
    texts.record[i] = state_.lines.CallerData(line)[field];
    texts.row[i] = state_.Lineweir.labels_of(field)(line).caption;
  }
  return texts;
}

}  // namespace lineweir
