#pragma once

#include <optional>
#include <string>
#include <vector>

#include "callerdata/caller_history.h"
#include "forms/caller_data_form.h"

namespace lineweir {

class CallLog;
class KnownCallers;
struct ConsoleState;

// Shows on Form4 what the log and the server know of the caller whose telephone number is entered
// or arrives, and fills it in if the user wants it. Of the two the one that knows more calls is
// shown. The button names what it would fill in, and isn't there where that is nothing. It never
// asks and never takes the focus; whoever types on has declined. The caller's flag stays.
class CallerMemory {
 public:
  CallerMemory(ConsoleState& state, CallLog& call_log, KnownCallers& known);

  // Who may know the caller, and whether there is anybody.
  CallerDataForm::Memory kind() const;
  bool on() const { return kind() != CallerDataForm::Memory::None; }

  // The form has another telephone number. Fails as the log does.
  void look_up();

  // Another field has another text, so that there may be more or less to fill in.
  void offer();

  // A key is pressed in one of Form4's fields, before the field sees it. An Esc that has withdrawn
  // an offer is used up.
  void key_pressed(int& key);

  // Withdraws the offer.
  void hide();

  // The server has told something, or is gone.
  void known_changed();

  // The server is asked for the number on the form, unless another is typed first.
  void ask_soon();

 private:
  void MemoryFill_Click();
  void AskTimer_Timer();
  const std::string& number() const;
  void look_into_log();
  void show_history();
  void show_flag();
  // The entries that can be filled in now: those in use that have nothing else in them.
  std::vector<int> fillable() const;
  const std::string& known(int entry) const;

  ConsoleState& state_;
  CallLog& call_log_;
  KnownCallers& known_;
  // What the log knows of the number on the form, and what is shown.
  std::optional<CallerHistory> logged_;
  CallerHistory history_;
  // Whether an answer of the server is awaited, and whether it could be asked before.
  bool asked_ = false;
  bool was_served_ = false;
};

}  // namespace lineweir
