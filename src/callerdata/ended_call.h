#pragma once

#include <cstdint>

#include "platform/call_journal.h"

namespace lineweir {

// Names a call for as long as the program runs. No call has the number 0.
using CallNumber = std::uint64_t;

// How a call left its line on this console.
enum class CallEnd {
  HungUp,
  // The console shows the lines of another group now.
  GroupLeft,
};

// A call that has ended, and the record of it: what was logged or, where no file is named, what
// would have been.
struct EndedCall {
  CallNumber call = 0;
  platform::LoggedCall record;
  CallEnd how = CallEnd::HungUp;

  friend bool operator==(const EndedCall&, const EndedCall&) = default;
};

}  // namespace lineweir
