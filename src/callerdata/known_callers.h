#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string_view>

#include "elements/form.h"
#include "wire/caller_known.h"

namespace lineweir {

class Links;
struct ConsoleState;

// What the studio's server remembers of callers: of those on the lines, and of the number that was
// asked for last. A server has a memory where it says so when the console enters a group; all that
// it has told is forgotten with the group and with the link.
class KnownCallers final : private FormWatch {
 public:
  KnownCallers(ConsoleState& state, const Links& links);

  // Whether there is a server that can be asked.
  bool served() const { return served_; }

  // Null where nothing is known.
  const CallerKnown* on_line(int line) const;
  // What was told of the number by itself or as that of a line's caller.
  const CallerKnown* of_number(std::string_view number) const;

  // What the server says.
  void begin();
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
  bool served_ = false;
  std::map<int, CallerKnown> on_lines_;
  std::optional<CallerKnown> answer_;
};

}  // namespace lineweir
