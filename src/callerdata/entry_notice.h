#pragma once

#include <functional>
#include <set>
#include <string>

#include "callerdata/entry_work.h"

namespace lineweir {

// What the user has to know of the fields while typing.
struct EntryNotice {
  // Fields that another console has changed after the user had touched them.
  std::set<int> elsewhere;
  // The field that has no room for what was put in last; 0 for none.
  int full = 0;
};

// A line for each thing to be told; empty where there is nothing. `heading` gives a field's title.
std::string notice_text(const EntryNotice& notice, const EntryWork& work,
                        const std::function<std::string(int entry)>& heading);

}  // namespace lineweir
