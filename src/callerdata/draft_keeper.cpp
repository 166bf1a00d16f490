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
    "What was typed or saved for callers and isn't in the log yet won't outlive Lineweir. Make "
    "room there, or give it the right to that folder.";

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
  if (EntryDraft* earlier = drafts_.find(draft.call)) draft.unlogged = earlier->unlogged;
  drafts_.keep(std::move(draft));
  write();
}

void DraftKeeper::settle(CallNumber call) {
  EntryDraft* draft = drafts_.find(call);
  if (draft != nullptr && draft->unlogged) {
    draft->work = {};
  } else {
    drafts_.drop(call);
  }
  write();
}

void DraftKeeper::logging(int line, const EndedCall& ended) {
  for (const EntryDraft& draft : drafts_.all()) {
    if (draft.ended && is_row_of(draft.ended->record, ended.record))
      drafts_.find(draft.call)->ended->record.columns = ended.record.columns;
  }
  const EntryDraft* draft = drafts_.find(ended.call);
  EntryDraft now = draft == nullptr ? EntryDraft{ended.call, line} : *draft;
  now.ended = ended;
  std::vector<platform::LoggedColumn>& row = now.ended->record.replaced;
  if (row.empty()) row = ended.record.columns;
  now.unlogged = true;
  drafts_.keep(std::move(now));
  write();
}

void DraftKeeper::call_ended(const EndedCall& ended) {
  EntryDraft* draft = drafts_.find(ended.call);
  if (draft == nullptr) return;
  draft->ended = ended;
  draft->unlogged = false;
  if (!draft->unsaved()) drafts_.drop(ended.call);
  write();
}

void DraftKeeper::log_left_calls(const std::set<int>& told) {
  std::vector<EntryDraft> left = drafts_.all();
  std::erase_if(left, [&](const EntryDraft& draft) {
    if (!draft.unlogged) return true;
    const auto& seen = draft.ended->last_seen;
    const bool is_here = seen && seen->group == state_.program.GroupNumber;
    return is_here && !told.contains(draft.line);
  });
  if (left.empty()) return;
  for (EntryDraft& draft : left) {
    call_log_.log_left(draft.line, *draft.ended);
    draft.unlogged = false;
    if (draft.unsaved()) {
      drafts_.keep(std::move(draft));
    } else {
      drafts_.drop(draft.call);
    }
  }
  write();
}

bool DraftKeeper::complete_left(CallNumber call, const EntryTexts& texts) {
  EntryDraft* draft = drafts_.find(call);
  if (draft == nullptr || !draft->unlogged) return false;
  draft->ended->record = call_log_.with_texts(std::move(draft->ended->record), texts);
  draft->work = {};
  write();
  return true;
}

void DraftKeeper::take_up(CallNumber former, CallNumber call) {
  EntryDraft* const left = drafts_.find(former);
  if (left == nullptr || drafts_.find(call) != nullptr) return;
  EntryDraft draft{call, left->line, std::exchange(left->work, {})};
  if (!left->unlogged) drafts_.drop(former);
  if (draft.unsaved()) drafts_.keep(std::move(draft));
  write();
}

std::vector<EntryDraft> DraftKeeper::restore() {
  const bool in_use = written_ != "";
  std::vector<std::string> left = file_->take_over();
  std::vector<EntryDraft> restored = drafts_of_files(state_.services.letters, left);
  for (EntryDraft& draft : restored) {
    draft.call = draft.ended->call = call_log_.new_call();
    // A line that isn't in use any more couldn't be opened.
    if (draft.line >= state_.lines.LineCount) {
      draft.line = state_.lines.LineCount - 1;
      draft.ended->last_seen.reset();
    }
    drafts_.keep(draft);
  }
  if (in_use || left.size() > 1) {
    written_.reset();
    write();
  } else {
    // What isn't read here may be another release's, and stays as long as nothing is written.
    written_ = restored.empty() ? "" : std::move(left.front());
  }
  std::erase_if(restored, [](const EntryDraft& draft) { return !draft.unsaved(); });
  return restored;
}

std::optional<platform::LoggedCall> DraftKeeper::unlogged_on(int line) {
  if (!state_.lines.has_caller(line)) return std::nullopt;
  return call_log_.to_be_logged(line);
}

std::vector<EntryDraft> DraftKeeper::left_by_this_run() {
  std::vector<EntryDraft> drafts = drafts_.all();
  for (int line = 0; line < state_.lines.LineCount; ++line) {
    const auto call = call_log_.known_call_on(line);
    if (call && drafts_.find(*call) == nullptr && unlogged_on(line))
      drafts.push_back({*call, line});
  }
  for (EntryDraft& draft : drafts) {
    // Whoever reads the file won't find the call on its line any more.
    if (draft.ended) continue;
    draft.ended = EndedCall{draft.call, call_log_.call_so_far(draft.line)};
    draft.ended->last_seen = call_log_.last_seen();
    auto unlogged = unlogged_on(draft.line);
    if (!unlogged) continue;
    draft.ended->record = *std::move(unlogged);
    draft.unlogged = true;
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
  report_failure(state_.trace, "DraftKeeper", failure);
  state_.messages.ShowMessage(reason + ". " + std::string(until_the_end));
}

}  // namespace lineweir
