#include "callerdata/draft_keeper.h"

#include <algorithm>
#include <set>
#include <utility>

#include "callerdata/call_log.h"
#include "callerdata/draft_file.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {

DraftKeeper::DraftKeeper(ConsoleState& state, CallLog& call_log)
    : state_(state),
      call_log_(call_log),
      file_(state.services.files.console_file(std::string(draft_file_name))) {}

std::vector<int> DraftKeeper::lines_of_present_calls() const {
  std::set<int> lines;
  for (const EntryDraft& draft : drafts_.all()) {
    if (!draft.ended) lines.insert(draft.line);
  }
  return {lines.begin(), lines.end()};
}

void DraftKeeper::keep(EntryDraft draft) {
  drafts_.keep(std::move(draft));
  write();
}

void DraftKeeper::drop(CallNumber call) {
  drafts_.drop(call);
  write();
}

void DraftKeeper::call_ended(const EndedCall& ended) {
  EntryDraft* draft = drafts_.find(ended.call);
  if (draft == nullptr) return;
  draft->ended = ended;
  write();
}

void DraftKeeper::take_up(CallNumber former, CallNumber call) {
  EntryDraft* draft = drafts_.find(former);
  if (draft == nullptr || drafts_.find(call) != nullptr) return;
  draft->call = call;
  draft->ended.reset();
  write();
}

std::vector<EntryDraft> DraftKeeper::restore() {
  std::vector<std::string> left = file_->take_over();
  std::vector<EntryDraft> restored = drafts_of_files(state_.services.letters, left);
  for (EntryDraft& draft : restored) {
    draft.call = call_log_.new_call();
    // A line that isn't in use any more couldn't be opened.
    draft.line = std::min(draft.line, state_.lines.LineCount - 1);
    drafts_.keep(draft);
  }
  if (left.empty()) {
    written_ = "";
  } else if (left.size() == 1) {
    written_ = std::move(left.front());
  } else {
    write();
  }
  return restored;
}

void DraftKeeper::write() {
  guard(state_.trace, "Form4_DraftTimer_Timer", [&] {
    std::vector<EntryDraft> drafts = drafts_.all();
    for (EntryDraft& draft : drafts) {
      // Whoever reads the file won't find the call on its line any more.
      if (draft.ended) continue;
      draft.ended = EndedCall{draft.call, call_log_.call_so_far(draft.line)};
      draft.ended->last_seen = call_log_.last_seen_now();
    }
    std::string text = draft_file_text(state_.services.letters, drafts);
    if (text == written_) return;
    file_->replace(text);
    written_ = std::move(text);
  });
}

}  // namespace lineweir
