#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string_view>

#include "elements/form.h"
#include "wire/caller_known.h"

namespace lineweir {

class Links;
struct ConsoleState;

// What the studio's server remembers of callers: of those on the lines, and of the number that was
// asked for last. A server has a memory where it says so when the console enters a group. What it
// has told is forgotten with the group; while the link is broken it stays as the rows do, until the
// next session has told anew.
class KnownCallers final : private FormWatch {
 public:
  KnownCallers(ConsoleState& state, const Links& links);

  // Whether this studio's server has a memory, and whether it can be asked now.
  bool remembers() const { return remembers_; }
  bool served() const { return served_; }

  // Null where nothing is known.
  const CallerKnown* on_line(int line) const;
  // What was told of the number by itself or as that of a line's caller.
  const CallerKnown* of_number(std::string_view number) const;

  // What the server says.
  void begin();
  // Behind it all that is known of the lines has been told; what was known before it is over.
  void told_all_lines();
  void tell(int line, CallerKnown known);
  void answer(CallerKnown known);
  void forget(int line);
  void forget();

  // Both go to the server. The first is passed over where that can't be; the user learns why the
  // second hasn't gone out, and then it returns false.
  void ask(std::string_view number);
  bool flag(std::string_view handler, const CallerFlagging& flagging);

  // Told of each change, the one who draws the rows behind the others.
  std::function<void()> on_change;
  std::function<void()> on_rows_change;

 private:
  void changed(Element& element, PropertyId property) override;
  void tell_change() const;

  ConsoleState& state_;
  const Links& links_;
  bool remembers_ = false;
  bool served_ = false;
  std::map<int, CallerKnown> on_lines_;
  // Lines of which the session before has told, and this one not yet.
  std::set<int> not_told_yet_;
  std::optional<CallerKnown> answer_;
};

}  // namespace lineweir
