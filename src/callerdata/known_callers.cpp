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
  remembers_ = true;
  served_ = true;
  answer_.reset();
  not_told_yet_.clear();
  for (const auto& [line, known] : on_lines_) not_told_yet_.insert(line);
  tell_change();
}

void KnownCallers::told_all_lines() {
  if (not_told_yet_.empty()) return;
  for (const int line : std::exchange(not_told_yet_, {})) on_lines_.erase(line);
  tell_change();
}

void KnownCallers::tell(int line, CallerKnown known) {
  not_told_yet_.erase(line);
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
  if (!remembers_ && on_lines_.empty() && !answer_) return;
  remembers_ = false;
  served_ = false;
  not_told_yet_.clear();
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
  if (!links_.in_use().may_remember_callers()) return forget();
  const bool lost = other_link && !state_.Lineweir.no_link.get().empty();
  if (!lost || !served_) return;
  served_ = false;
  tell_change();
}

void KnownCallers::tell_change() const {
  if (on_change) on_change();
  if (on_rows_change) on_rows_change();
}

}  // namespace lineweir
