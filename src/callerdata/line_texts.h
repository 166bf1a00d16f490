#pragma once

#include <map>

#include "callerdata/entry_work.h"

namespace lineweir {

struct ConsoleState;

// What records and rows say of the callers who are on their lines now. A row, and at times a
// record, keeps a caller's texts after the call: these are nobody's until something else stands
// there.
class LineTexts {
 public:
  explicit LineTexts(ConsoleState& state) : state_(state) {}

  EntryTexts of(int line) const;

  // The texts of the line belong to a caller who has gone.
  void caller_gone(int line);

  // The texts of the line, also those that have stayed the same, are now of the caller on it.
  void renewed(int line) { gone_.erase(line); }

 private:
  struct Texts {
    EntryTexts record;
    EntryTexts row;
  };

  Texts standing_on(int line) const;

  ConsoleState& state_;
  std::map<int, Texts> gone_;
};

}  // namespace lineweir
