#pragma once

#include <string>
#include <string_view>

#include "callerdata/caller_history.h"

namespace lineweir {

struct Console;

// Shows on Form4 what the log knows of the caller whose telephone number is entered or arrives, and
// fills in name and city if the user wants it. It never asks and never takes the focus; whoever
// types on has declined.
class CallerMemory {
 public:
  explicit CallerMemory(Console& console);

  // Details of the line have come from another console.
  void number_arrived(int line, std::string_view number);

  // A key is pressed in one of Form4's fields, before the field sees it. An Esc that has withdrawn
  // an offer is used up.
  void key_pressed(int& key);

  // Withdraws the offer.
  void hide();

 private:
  void TheText6_Change();
  void MemoryFill_Click();
  void look_up(std::string_view number);

  Console& console_;
  CallerHistory offered_;
};

}  // namespace lineweir
