#pragma once

#include <functional>
#include <string>

#include "wire/caller_known.h"

namespace lineweir {

class KnownCallers;
struct ConsoleState;

// The small window in which a caller's flag is set: opened from Form4 for the number that stands
// there, which it keeps. What is typed stays until the flag has gone out or the user cancels.
class CallerFlagEntry {
 public:
  CallerFlagEntry(ConsoleState& state, KnownCallers& known);

  // The server has told something, or is gone, or there again.
  void known_changed();

  // Told of a number whose flag has gone out.
  std::function<void()> on_flagged;

 private:
  void FlagCaller_Click();
  void OKButton_Click();

  CallerFlag chosen() const;
  // Why the flag can't be set; empty where it can.
  std::string obstacle() const;
  // The last day as typed; a date that is none, or over, is told.
  bool take_last_day(CallerFlagging& flagging);

  ConsoleState& state_;
  KnownCallers& known_;
  std::string number_;
};

}  // namespace lineweir
