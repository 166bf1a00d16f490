#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/date_time.h"
#include "platform/call_journal.h"

namespace lineweir {

// Names a call for as long as the program runs. No call has the number 0.
using CallNumber = std::uint64_t;

// How a call left its line on this console.
enum class CallEnd {
  HungUp,
  // The console shows the lines of another group now.
  GroupLeft,
  // The console shows fewer lines now, and that one no longer.
  LineGone,
};

// The studio group and the moment at which a call was last seen on its line.
struct LastSeen {
  int group = 0;
  platform::DateTime at;
  // The servers in use then, whose group it is.
  std::string servers = {};

  friend bool operator==(const LastSeen&, const LastSeen&) = default;
};

// A call that has ended, and the record of it: what was logged or, where no file is named, what
// would have been.
struct EndedCall {
  CallNumber call = 0;
  platform::LoggedCall record;
  CallEnd how = CallEnd::HungUp;
  // Nothing where the end itself was seen: the call may be on its line still.
  std::optional<LastSeen> last_seen = {};

  friend bool operator==(const EndedCall&, const EndedCall&) = default;
};

}  // namespace lineweir
