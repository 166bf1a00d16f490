#include "callerdata/entry_drafts.h"

#include <algorithm>
#include <utility>

namespace lineweir {

void EntryDrafts::keep(EntryDraft draft) {
  if (EntryDraft* earlier = find(draft.call)) {
    *earlier = std::move(draft);
  } else {
    drafts_.push_back(std::move(draft));
  }
}

void EntryDrafts::drop(CallNumber call) {
  std::erase_if(drafts_, [call](const EntryDraft& draft) { return draft.call == call; });
}

EntryDraft* EntryDrafts::find(CallNumber call) {
  const auto found = std::ranges::find(drafts_, call, &EntryDraft::call);
  return found == drafts_.end() ? nullptr : &*found;
}

const EntryDraft* EntryDrafts::ended_on(int line) const {
  const EntryDraft* latest = nullptr;
  for (const EntryDraft& draft : drafts_) {
    if (draft.line == line && draft.ended && draft.unsaved()) latest = &draft;
  }
  return latest;
}

std::vector<EntryDraft> EntryDrafts::left_on(int line) const {
  std::vector<EntryDraft> left;
  for (const EntryDraft& draft : drafts_) {
    const bool was_left = draft.ended && draft.ended->last_seen;
    if (draft.line == line && was_left && draft.unsaved()) left.push_back(draft);
  }
  std::ranges::reverse(left);
  return left;
}

}  // namespace lineweir
