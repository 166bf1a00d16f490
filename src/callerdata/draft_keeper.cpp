#include "callerdata/draft_keeper.h"

#include <algorithm>
#include <utility>

#include "callerdata/call_log.h"
#include "callerdata/draft_file.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {

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

std::vector<EntryDraft> DraftKeeper::restore() {
  written_ = state_.services.files.read(std::string(draft_file_name)).value_or(std::string());
  std::vector<EntryDraft> restored = drafts_of_file(state_.services.letters, written_);
  for (EntryDraft& draft : restored) {
    draft.call = call_log_.new_call();
    draft.ended->call = draft.call;
    // A line that isn't in use any more couldn't be opened.
    draft.line = std::min(draft.line, state_.lines.LineCount - 1);
    drafts_.keep(draft);
  }
  return restored;
}

void DraftKeeper::write() {
  guard(state_.trace, "Form4_DraftTimer_Timer", [&] {
    std::vector<EntryDraft> drafts = drafts_.all();
    for (EntryDraft& draft : drafts) {
      // Whoever reads the file won't find the call on its line any more.
      if (!draft.ended) draft.ended = EndedCall{draft.call, call_log_.call_so_far(draft.line)};
    }
    std::string text = draft_file_text(state_.services.letters, drafts);
    if (text == written_) return;
    state_.services.files.replace_soon(std::string(draft_file_name), text);
    written_ = std::move(text);
  });
}

}  // namespace lineweir
