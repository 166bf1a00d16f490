#pragma once

#include <map>
#include <optional>

#include "callerdata/entry_work.h"

namespace lineweir {

// What was typed into Form4 and not saved, by line. A draft belongs to the call that was on the
// line when its typing began, which is told by the number of calls that had ended there.
class EntryDrafts {
 public:
  void keep(int line, int call, const EntryWork& work) { drafts_[line] = {call, work}; }
  void drop(int line) { drafts_.erase(line); }

  // The line's draft. When its call has ended it is given only while the line is idle: the next
  // caller's form must not show another one's name.
  std::optional<EntryWork> find(int line, int call, bool line_idle) const;

 private:
  struct Draft {
    int call = 0;
    EntryWork work;
  };

  std::map<int, Draft> drafts_;
};

}  // namespace lineweir
