#include "callerdata/entry_drafts.h"

namespace lineweir {

std::optional<EntryWork> EntryDrafts::find(int line, int call, bool line_idle) const {
  const auto draft = drafts_.find(line);
  if (draft == drafts_.end()) return std::nullopt;
  if (draft->second.call != call && !line_idle) return std::nullopt;
  return draft->second.work;
}

}  // namespace lineweir
