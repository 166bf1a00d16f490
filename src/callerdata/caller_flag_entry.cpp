#include "callerdata/caller_flag_entry.h"

#include "base/iso_date.h"
#include "base/text.h"
#include "callerdata/caller_history.h"
#include "callerdata/entry_fit.h"
#include "callerdata/known_caller_text.h"
#include "callerdata/known_callers.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr std::string_view away = "The server isn't there now: the flag is not set.";
constexpr auto ok_handler = "CallerFlagForm_OKButton_Click";

std::string reason_is_full() {
  return std::string("Reason") + " takes no more than " + std::to_string(flag_reason_length) +
         " characters";
}

}  // namespace

CallerFlagEntry::CallerFlagEntry(ConsoleState& state, KnownCallers& known)
    : state_(state), known_(known) {
  CallerFlagForm& form = state.FlagForm;
  wire(state.Form4.FlagCaller.on_click, state.trace, "Form4_FlagCaller_Click",
       [this] { FlagCaller_Click(); });
  wire(form.OKButton.on_click, state.trace, ok_handler, [this] { OKButton_Click(); });
  wire(form.CancelButton.on_click, state.trace, "CallerFlagForm_CancelButton_Click",
       [this] { state_.FlagForm.unload(); });
  wire(form.ReasonText.on_edit, state.trace, "CallerFlagForm_ReasonText_Edit",
       [this](std::string& text, int& caret) {
         const EditedText fitted =
             fit_text(state_.FlagForm.ReasonText.text.get(), {text, caret}, flag_reason_length);
         text = fitted.text;
         caret = fitted.caret;
         state_.FlagForm.show_notice(fitted.left_out ? reason_is_full() : std::string());
       });
}

void CallerFlagEntry::FlagCaller_Click() {
  const std::string number(trimmed(state_.Form4.TheText(phone_number_entry).text.get()));
  if (!known_.served() || number_forms(number).empty()) return;
  CallerFlagForm& form = state_.FlagForm;
  const bool holds_it = form.loaded() && same_number(number, number_);
  number_ = number;
  if (!holds_it) {
    const CallerKnown* known = known_.of_number(number);
    const CallerKnown present = known == nullptr ? CallerKnown{} : *known;
    form.NumberLabel.caption =
        "Flag of " + number + (present.name.empty() ? "" : ", " + present.name);
    const auto choices = form.choices();
    for (std::size_t flag = 0; flag < choices.size(); ++flag) {
      choices[flag]->value = flag == static_cast<std::size_t>(present.flag);
    }
    form.ReasonText.text = present.reason;
    form.UntilText.text = shown_day(present.until);
    form.ReasonText.caret_to_end();
    form.UntilText.caret_to_end();
    form.show_notice("");
  }
  form.show();
  form.choices()[static_cast<std::size_t>(chosen())]->set_focus();
}

void CallerFlagEntry::known_changed() {
  CallerFlagForm& form = state_.FlagForm;
  const bool is_over = form.loaded() && known_.served() && form.NoticeLabel.caption.get() == away;
  if (is_over) form.show_notice("");
}

CallerFlag CallerFlagEntry::chosen() const {
  const auto choices = state_.FlagForm.choices();
  for (std::size_t flag = 0; flag < choices.size(); ++flag) {
    if (choices[flag]->value) return static_cast<CallerFlag>(flag);
  }
  return CallerFlag::None;
}

std::string CallerFlagEntry::obstacle() const {
  if (!state_.program.CallerFlagAllowed) return "Flags may not be set in this user profile.";
  if (!known_.served()) return std::string(away);
  return {};
}

bool CallerFlagEntry::take_last_day(CallerFlagging& flagging) {
  CallerFlagForm& form = state_.FlagForm;
  const auto typed = trimmed(form.UntilText.text.get());
  if (typed.empty()) return true;
  const auto day = typed_day(typed);
  if (day && iso_date_text(*day) >= iso_date_text(state_.services.clock.now())) {
    flagging.until = iso_date_text(*day);
    return true;
  }
  form.show_notice(day ? "The last day is over already."
                       : "The last day is no date: write it as 12/31/2026, or leave it empty.");
  form.UntilText.set_focus();
  return false;
}

void CallerFlagEntry::OKButton_Click() {
  CallerFlagForm& form = state_.FlagForm;
  if (const std::string why = obstacle(); !why.empty()) return form.show_notice(why);
  CallerFlagging flagging;
  flagging.flag = chosen();
  flagging.number = number_;
  // Without a flag there is nothing to give a reason for.
  if (flagging.flag != CallerFlag::None) {
    flagging.reason = trimmed(form.ReasonText.text.get());
    if (!take_last_day(flagging)) return;
  }
  const std::string number = number_;
  const bool sent = known_.flag(ok_handler, flagging);
  // The loop may have run in between, and the form may hold another number by now.
  if (!sent || !form.loaded() || number_ != number) return;
  form.unload();
  if (on_flagged) on_flagged();
}

}  // namespace lineweir
