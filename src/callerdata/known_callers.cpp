#include "callerdata/known_callers.h"

#include <utility>

#include "callerdata/caller_history.h"
#include "link/links.h"
#include "state/console_state.h"

namespace lineweir {

KnownCallers::KnownCallers(ConsoleState& state, const Links& links)
    : FormWatch(state.Lineweir), state_(state), links_(links) {}

const CallerKnown* KnownCallers::on_line(int line) const {
  const auto found = on_lines_.find(line);
  return found == on_lines_.end() ? nullptr : &found->second;
}

const CallerKnown* KnownCallers::of_number(std::string_view number) const {
  // A line's is told anew when it changes, an answer isn't.
  for (const auto& [line, known] : on_lines_) {
    if (same_number(known.number, number)) return &known;
  }
  return answer_ && same_number(answer_->number, number) ? &*answer_ : nullptr;
}

void KnownCallers::begin() {
  served_ = true;
  tell_change();
}

void KnownCallers::tell(int line, CallerKnown known) {
  on_lines_[line] = std::move(known);
  tell_change();
}

void KnownCallers::answer(CallerKnown known) {
  answer_ = std::move(known);
  tell_change();
}

void KnownCallers::forget(int line) {
  if (on_lines_.erase(line) > 0) tell_change();
}

void KnownCallers::forget() {
  if (!served_ && on_lines_.empty() && !answer_) return;
  served_ = false;
  on_lines_.clear();
  answer_.reset();
  tell_change();
}

void KnownCallers::ask(std::string_view number) {
  if (served_) links_.in_use().ask_caller("Form4_AskTimer_Timer", number);
}

bool KnownCallers::flag(std::string_view handler, const CallerFlagging& flagging) {
  // The answer that is held may tell of the flag before.
  answer_.reset();
  return links_.in_use().flag_caller(handler, static_cast<int>(flagging.flag),
                                     encode_caller_flagging(flagging));
}

void KnownCallers::changed(Element& element, PropertyId property) {
  const bool other_way =
      &element == &state_.Lineweir.WinsockMenu && property == PropertyId::Checked;
  const bool other_link = &element == &state_.Lineweir && property == PropertyId::NoLink;
  if (!other_way && !other_link) return;
  const bool lost = other_link && !state_.Lineweir.no_link.get().empty();
  if (lost || !links_.in_use().may_remember_callers()) forget();
}

void KnownCallers::tell_change() const {
  if (on_change) on_change();
  if (on_rows_change) on_rows_change();
}

}  // namespace lineweir
