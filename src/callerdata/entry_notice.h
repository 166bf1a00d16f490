#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>

#include "callerdata/ended_call.h"
#include "callerdata/entry_work.h"

namespace lineweir {

// What the user has to know while typing.
struct EntryNotice {
  // How the call has left its line; nothing while it's there.
  std::optional<CallEnd> end;
  // Fields that another console has changed after the user had touched them.
  std::set<int> elsewhere;
  // The field that has no room for what was put in last; 0 for none.
  int full = 0;
  // Why nothing has come of what the user wanted.
  std::string remark = {};
};

// A line for each thing to be told; empty where there is nothing. `heading` gives a field's title.
std::string notice_text(const EntryNotice& notice, const EntryWork& work,
                        const std::function<std::string(int entry)>& heading);

}  // namespace lineweir
