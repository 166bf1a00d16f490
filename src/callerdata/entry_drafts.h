#pragma once

#include <optional>
#include <vector>

#include "callerdata/ended_call.h"
#include "callerdata/entry_work.h"

namespace lineweir {

// What was typed into Form4 for a call, and what was saved of it, as long as that isn't in the log.
struct EntryDraft {
  CallNumber call = 0;
  int line = 0;
  EntryWork work = {};
  // Nothing while the call is on its line.
  std::optional<EndedCall> ended = {};
  // Whether the ended call's record isn't in its log, as it was logged by no run of the program
  // that saw the call. It replaces itself where it may be there already, since a run was killed
  // while it put it there.
  bool unlogged = false;

  // Whether something was typed and not saved.
  bool unsaved() const { return work.any_touched(); }

  friend bool operator==(const EntryDraft&, const EntryDraft&) = default;
};

// The drafts, each of which belongs to a call. What was typed for one caller is never another's.
class EntryDrafts {
 public:
  // In the place of the call's earlier one.
  void keep(EntryDraft draft);
  void drop(CallNumber call);

  // Null where there is none.
  EntryDraft* find(CallNumber call);
  // The latest with unsaved texts of a call that has ended on the line; null where there is none.
  const EntryDraft* ended_on(int line) const;

  // Those with unsaved texts of calls that left the line without an end that was seen, the latest
  // one first.
  std::vector<EntryDraft> left_on(int line) const;

  // In the order in which they were first kept.
  const std::vector<EntryDraft>& all() const { return drafts_; }

 private:
  std::vector<EntryDraft> drafts_;
};

}  // namespace lineweir
