#include "callerdata/caller_notes.h"

#include <algorithm>

#include "base/text.h"
#include "callerdata/call_log.h"
#include "callerdata/caller_history.h"
#include "callerdata/known_caller_text.h"
#include "callerdata/known_callers.h"
#include "callerdata/line_texts.h"
#include "forms/entry_fields.h"
#include "screen/row_states.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {
namespace {

constexpr auto handler = "Lineweir_CallerNote_Change";

bool tells_of_caller(const Element& element, PropertyId property) {
  if (property == PropertyId::Picture) return element.name() == "DataRow";
  return property == PropertyId::Caption && element.kind() == ElementKind::Label &&
         element.index() != no_index && element.name() != "LineTime" &&
         element.name() != "CallerNote";
}

void append(std::string& text, std::string_view separator, std::string_view more) {
  if (more.empty()) return;
  if (!text.empty()) text += separator;
  text += more;
}

}  // namespace

CallerNotes::CallerNotes(ConsoleState& state, const RowStates& row_states,
                         const LineTexts& line_texts, CallLog& call_log,
                         const KnownCallers& known_callers)
    : FormWatch(state.Lineweir),
      state_(state),
      row_states_(row_states),
      line_texts_(line_texts),
      call_log_(call_log),
      known_callers_(known_callers) {}

CallerNotes::~CallerNotes() {
  if (review_) state_.services.loop.cancel(*review_);
}

void CallerNotes::changed(Element& element, PropertyId property) {
  if (tells_of_caller(element, property)) review_soon();
}

void CallerNotes::review_soon() {
  if (review_) return;
  review_ = state_.services.loop.schedule(platform::Milliseconds{0}, [this] {
    review_.reset();
    guard(state_.trace, handler, [this] { review(); });
  });
}

void CallerNotes::review() {
  const std::vector<int> lines = lines_in_question();
  std::erase_if(known_, [&](const auto& known) {
    return std::ranges::find(lines, known.first) == lines.end();
  });
  int shown = 0;
  for (const int line : lines) {
    const std::string note = note_of(line);
    if (note.empty()) continue;
    Label& label = state_.Lineweir.CallerNote(shown++);
    label.caption = note;
    label.fore_color = row_states_.of(line) >= RowState::OnAir ? color_red : color_green;
    label.visible = true;
    if (shown == most_caller_notes) return;
  }
  for (; shown < most_caller_notes; ++shown) state_.Lineweir.CallerNote(shown).visible = false;
}

std::vector<int> CallerNotes::lines_in_question() const {
  const LineTable& lines = state_.lines;
  std::vector<int> found;
  for (int line = 0; line < lines.LineCount; ++line) {
    if (row_states_.of(line) >= RowState::OnAir) found.push_back(line);
  }
  const int next = lines.TheNextCall;
  const bool waits = next >= 0 && next < lines.LineCount && row_states_.of(next) < RowState::OnAir;
  if (!waits || is_empty(lines.shown_letter(next))) return found;
  // However many are on air, the next one has a place.
  if (std::ssize(found) >= most_caller_notes) found.resize(most_caller_notes - 1);
  found.push_back(next);
  return found;
}

std::string CallerNotes::note_of(int line) {
  const EntryTexts texts = line_texts_.of(line);
  const auto text_of = [&](CallerField field) {
    return std::string(trimmed(texts[static_cast<std::size_t>(entry_of(field) - 1)]));
  };
  const Letters& letters = state_.services.letters;
  std::string who = text_of(CallerField::CallerName);
  append(who, ", ", text_of(CallerField::City));
  std::string note = who;
  if (const CallerKnown* known = known_callers_.on_line(line)) {
    append(note, letters.from_utf8(" \u00b7 "), flag_in_short(*known));
  }
  append(note, letters.from_utf8(" \u00b7 "), history_of(line, text_of(CallerField::PhoneNumber)));
  // Last, as it may be long.
  append(note, letters.from_utf8(" \u2013 "), text_of(CallerField::Comments));
  return note.empty() ? note : std::to_string(line + 1) + " " + note;
}

std::string CallerNotes::history_of(int line, const std::string& number) {
  const CallerKnown* remembered = known_callers_.on_line(line);
  const bool is_number = !number_forms(number).empty();
  std::optional<CallerHistory> logged;
  bool told = false;
  if (is_number && call_log_.chosen()) {
    logged = look_into_log(line, number);
    told = known_[line].told;
  }
  const auto history = richer(logged, remembered);
  return history || told ? history_in_short(history) : std::string();
}

std::optional<CallerHistory> CallerNotes::look_into_log(int line, const std::string& number) {
  Known& known = known_[line];
  if (known.number == number) return known.history;
  known = {number, {}, false};
  known.told = attempt(
      [&] { known.history = find_history(call_log_.recordset(), state_.services.letters, number); },
      [&](const Failure& failure) { report_failure(state_.trace, handler, failure); });
  return known.history;
}

}  // namespace lineweir
