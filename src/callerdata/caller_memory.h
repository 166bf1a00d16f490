#pragma once

#include <string>
#include <vector>

#include "callerdata/caller_history.h"

namespace lineweir {

class CallLog;
struct ConsoleState;

// Shows on Form4 what the log knows of the caller whose telephone number is entered or arrives, and
// fills it in if the user wants it. The button names what it would fill in, and isn't
// there where that is nothing. It never asks and never takes the focus; whoever types on has
// declined.
class CallerMemory {
 public:
  CallerMemory(ConsoleState& state, CallLog& call_log);

  // Whether there is a log that may know the caller.
  bool on() const;

  // The form has another telephone number. Fails as the log does.
  void look_up();

  // Another field has another text, so that there may be more or less to fill in.
  void offer();

  // A key is pressed in one of Form4's fields, before the field sees it. An Esc that has withdrawn
  // an offer is used up.
  void key_pressed(int& key);

  // Withdraws the offer.
  void hide();

 private:
  void MemoryFill_Click();
  // The entries that can be filled in now: those in use that have nothing else in them.
  std::vector<int> fillable() const;
  const std::string& known(int entry) const;

  ConsoleState& state_;
  CallLog& call_log_;
  CallerHistory history_;
};

}  // namespace lineweir
