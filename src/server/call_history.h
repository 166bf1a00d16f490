#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/store_records.h"

namespace lineweir::server {

// What the steps of a call tell of its line, so that a server that takes the call over knows as
// much of it as the one before.
struct CallHistory {
  // What happened last, but for the data; empty where nothing is known.
  std::string action;
  platform::Moment since{0};
  // When the line's clock began; 0 where none runs.
  platform::Moment clock{0};
  // Who took the line last; empty where nobody has.
  std::string worked_by;
  // Who brought about what happened last; empty where it came by itself.
  std::string last_by;
};

// The last step of a call of which nobody knows when it has ended.
inline constexpr const char* ended_unheard = "ended while the server was away";

// As a step of a call tells that its line has got the letter.
std::string_view step_name(char letter);

// The letter that the call's line had last, on equipment of the kind; nothing where that isn't
// known.
std::optional<char> last_letter(const platform::CallRecord& call, int kind);

// On equipment of the kind.
CallHistory history_of(const platform::CallRecord& call, int kind);

// The clock of the call's line, which has the letter at that moment and had not been heard of since
// the history's end.
platform::Moment clock_after(const CallHistory& history, char letter, int kind,
                             platform::Moment now);

}  // namespace lineweir::server
