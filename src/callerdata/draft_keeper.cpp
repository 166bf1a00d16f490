#include "callerdata/draft_keeper.h"

#include <algorithm>
#include <set>
#include <utility>

#include "callerdata/call_log.h"
#include "callerdata/draft_file.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {
namespace {

constexpr std::string_view until_the_end =
    "What is known of callers who are on their lines won't outlive Lineweir. Make room there, or "
    "give it the right to that folder.";

}  // namespace

DraftKeeper::DraftKeeper(ConsoleState& state, CallLog& call_log)
    : state_(state),
      call_log_(call_log),
      file_(state.services.files.console_file(std::string(draft_file_name))) {}

std::vector<int> DraftKeeper::lines_of_present_calls() const {
  std::set<int> lines;
  for (const EntryDraft& draft : drafts_.all()) {
    if (!draft.ended && draft.unsaved()) lines.insert(draft.line);
  }
  return {lines.begin(), lines.end()};
}

void DraftKeeper::keep(EntryDraft draft) {
  if (EntryDraft* earlier = drafts_.find(draft.call)) draft.unlogged = std::move(earlier->unlogged);
  drafts_.keep(std::move(draft));
  write();
}

void DraftKeeper::settle(CallNumber call) {
  EntryDraft* draft = drafts_.find(call);
  if (draft != nullptr && draft->ended) log(*draft);
  if (draft != nullptr && draft->unlogged) {
    draft->work = {};
  } else {
    drafts_.drop(call);
  }
  write();
}

void DraftKeeper::logging(int line, const EndedCall& ended) {
  const EntryDraft* draft = drafts_.find(ended.call);
  EntryDraft now = draft == nullptr ? EntryDraft{ended.call, line} : *draft;
  now.ended = ended;
  now.unlogged = ended.record;
  drafts_.keep(std::move(now));
  write();
}

void DraftKeeper::call_ended(const EndedCall& ended) {
  EntryDraft* draft = drafts_.find(ended.call);
  if (draft == nullptr) return;
  draft->ended = ended;
  if (ended.record.file.empty()) {
    log(*draft);
  } else {
    draft->unlogged.reset();
  }
  if (!draft->unsaved()) drafts_.drop(ended.call);
  write();
}

void DraftKeeper::log_left_calls() {
  const std::vector<EntryDraft> all = drafts_.all();
  for (const EntryDraft& draft : all) {
    if (!draft.ended || !draft.unlogged) continue;
    log_left_call(draft.call);
    if (!draft.unsaved()) drafts_.drop(draft.call);
  }
}

void DraftKeeper::log_left_call(CallNumber call) {
  if (EntryDraft* draft = drafts_.find(call)) log(*draft);
}

void DraftKeeper::log(EntryDraft& draft) {
  if (!draft.unlogged) return;
  if (draft.ended) draft.ended->record = *draft.unlogged;
  platform::LoggedCall call = *std::exchange(draft.unlogged, std::nullopt);
  call.replaced = call.columns;
  state_.services.journal.put(std::move(call));
}

void DraftKeeper::take_up(CallNumber former, CallNumber call) {
  const EntryDraft* left = drafts_.find(former);
  const EntryDraft* present = drafts_.find(call);
  if (left == nullptr || (present != nullptr && present->unsaved())) return;
  EntryDraft taken_up = *left;
  taken_up.call = call;
  taken_up.ended.reset();
  drafts_.drop(former);
  drafts_.keep(std::move(taken_up));
  write();
}

std::vector<EntryDraft> DraftKeeper::restore() {
  const bool in_use = written_ != "";
  std::vector<std::string> left = file_->take_over();
  std::vector<EntryDraft> restored = drafts_of_files(state_.services.letters, left);
  for (EntryDraft& draft : restored) {
    draft.call = call_log_.new_call();
    // A line that isn't in use any more couldn't be opened.
    draft.line = std::min(draft.line, state_.lines.LineCount - 1);
    drafts_.keep(draft);
  }
  if (in_use || left.size() > 1) {
    written_.reset();
    write();
  } else {
    written_ = left.empty() ? "" : std::move(left.front());
  }
  std::erase_if(restored, [](const EntryDraft& draft) { return !draft.unsaved(); });
  return restored;
}

bool DraftKeeper::would_be_lost(int line) const {
  return call_log_.is_logged(line) && state_.lines.has_caller(line);
}

std::vector<EntryDraft> DraftKeeper::left_by_this_run() {
  std::vector<EntryDraft> drafts = drafts_.all();
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    const CallNumber call = call_log_.call_on(line);
    if (drafts_.find(call) == nullptr && would_be_lost(line)) drafts.push_back({call, line});
  }
  for (EntryDraft& draft : drafts) {
    // Whoever reads the file won't find the call on its line any more.
    if (draft.ended) continue;
    draft.ended = EndedCall{draft.call, call_log_.call_so_far(draft.line)};
    draft.ended->last_seen = call_log_.last_seen_now();
    if (would_be_lost(draft.line)) draft.unlogged = call_log_.to_be_logged(draft.line);
    if (draft.unlogged) draft.ended->record = *draft.unlogged;
  }
  std::erase_if(drafts, [](const auto& draft) { return !draft.unsaved() && !draft.unlogged; });
  return drafts;
}

void DraftKeeper::write() {
  const auto bring_up_to_date = [&] {
    std::string text = draft_file_text(state_.services.letters, left_by_this_run());
    if (text == written_) return;
    file_->replace(text);
    written_ = std::move(text);
    told_.clear();
  };
  attempt(bring_up_to_date, [&](const Failure& failure) { tell(failure); });
}

void DraftKeeper::tell(const Failure& failure) {
  const std::string reason = description_of(state_.services.letters, failure);
  if (std::exchange(told_, reason) == reason) return;
  report_failure(state_.trace, "Form4_DraftTimer_Timer", failure);
  state_.messages.ShowMessage(reason + ". " + std::string(until_the_end));
}

}  // namespace lineweir
