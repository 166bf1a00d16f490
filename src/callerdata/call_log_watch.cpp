#include "callerdata/call_log_watch.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "callerdata/log_text.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

struct Advice {
  int failure;
  std::string_view text;
};

constexpr std::array advices = {
    Advice{failure_number::database_in_use, "Close the program that holds it."},
    Advice{failure_number::disk_full, "Make room on the disk."},
    Advice{failure_number::database_not_found,
           "Put it back, or choose a log with Options, Database Path."},
};
constexpr std::string_view other_advice = "Choose a log with Options, Database Path.";

std::string_view advice_for(int failure) {
  const auto found = std::ranges::find(advices, failure, &Advice::failure);
  return found == advices.end() ? other_advice : found->text;
}

}  // namespace

CallLogWatch::CallLogWatch(ConsoleState& state) : state_(state) {
  platform::Services& services = state.services;
  wire(services.journal.on_change, state_.trace, "CallLogWatch", [this] { look(); });
  wire(services.journal.on_replaced, state_.trace, "CallLogWatch",
       [this](const std::string& file) { tell_replaced(file); });
  // Calls of an earlier run may be waiting.
  first_look_ = services.loop.schedule(platform::Milliseconds{0},
                                       [this] { state_.services.journal.on_change(); });
}

CallLogWatch::~CallLogWatch() {
  state_.services.loop.cancel(first_look_);
  state_.services.journal.on_change.forget_handler();
  state_.services.journal.on_replaced.forget_handler();
}

bool CallLogWatch::told(const platform::LogTrouble& trouble) const {
  return std::ranges::any_of(told_, [&](const platform::LogTrouble& before) {
    return before.file == trouble.file && before.number == trouble.number;
  });
}

void CallLogWatch::look() {
  const platform::CallJournalState state = state_.services.journal.state();
  show_waiting(state.waiting);
  std::erase_if(told_, [&](const platform::LogTrouble& before) {
    return std::ranges::none_of(state.troubles, [&](const platform::LogTrouble& trouble) {
      return trouble.file == before.file;
    });
  });
  for (const platform::LogTrouble& trouble : state.troubles) {
    if (told(trouble)) continue;
    told_.push_back(trouble);
    tell(trouble.reason, outage_text(trouble));
  }
  if (!state.journal_trouble.empty() && told_of_journal_ != state.journal_trouble) {
    tell(state.journal_trouble, journal_outage_text(state.journal_trouble));
  }
  told_of_journal_ = state.journal_trouble;
}

void CallLogWatch::tell_replaced(const std::string& file) {
  const std::string sentence = "The call log '" + file + "' was replaced by another file.";
  tell(sentence, sentence + " Calls go into that one from now on.");
  if (on_replaced) on_replaced();
}

void CallLogWatch::tell(const std::string& reason, const std::string& text) {
  const Letters& letters = state_.services.letters;
  state_.trace.WriteTrace("Call log - " + letters.from_utf8(reason));
  state_.messages.ShowMessage(letters.from_utf8(text));
}

void CallLogWatch::show_waiting(int calls) {
  Label& label = state_.Lineweir.LogWaiting;
  label.caption = "Call log waiting: " + calls_text(calls);
  label.visible = calls > 0;
}

std::string outage_text(const platform::LogTrouble& trouble) {
  return trouble.reason +
         " Finished calls are kept and go there by themselves as soon as they can. " +
         std::string(advice_for(trouble.number));
}

std::string journal_outage_text(const std::string& reason) {
  return reason +
         " They wait in memory, and are lost if the machine is switched off before their log can "
         "be written.";
}

}  // namespace lineweir
