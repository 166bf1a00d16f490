#include "callerdata/draft_keeper.h"

#include <algorithm>
#include <utility>

#include "callerdata/draft_file.h"
#include "core/console.h"
#include "core/guard.h"

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
  written_ = console_.services.files.read(std::string(draft_file_name)).value_or(std::string());
  std::vector<EntryDraft> restored = drafts_of_file(console_.services.letters, written_);
  for (EntryDraft& draft : restored) {
    draft.call = console_.call_log.new_call();
    draft.ended->call = draft.call;
    // A line that isn't in use any more couldn't be opened.
    draft.line = std::min(draft.line, console_.lines.LineCount - 1);
    drafts_.keep(draft);
  }
  return restored;
}

void DraftKeeper::write() {
  guard(console_, "Form4_DraftTimer_Timer", [&] {
    std::vector<EntryDraft> drafts = drafts_.all();
    for (EntryDraft& draft : drafts) {
      // Whoever reads the file won't find the call on its line any more.
      if (!draft.ended)
        draft.ended = EndedCall{draft.call, console_.call_log.call_so_far(draft.line)};
    }
    std::string text = draft_file_text(console_.services.letters, drafts);
    if (text == written_) return;
    console_.services.files.replace_soon(std::string(draft_file_name), text);
    written_ = std::move(text);
  });
}

}  // namespace lineweir
