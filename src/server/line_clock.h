#pragma once

#include "lines/equipment_kinds.h"

namespace lineweir::server {

// What a change of its letter does to the clock of a line. It is the consoles' own rule, so that
// one that comes in later shows the clocks of the others.
enum class ClockChange { Runs, Begins, Ends };

struct ClockRule {
  char letter;
  unsigned kinds;
  ClockChange change;
  // In place of that, where the line comes from one of these letters.
  const char* from;
  ClockChange change_from;
};

inline constexpr ClockRule clock_rules[] = {
    {'R', any_kind, ClockChange::Begins, "", ClockChange::Begins},
    {'N', any_kind, ClockChange::Begins, "LK", ClockChange::Runs},
    {'C', any_kind, ClockChange::Begins, "LK", ClockChange::Runs},
    {'S', any_kind, ClockChange::Begins, "R", ClockChange::Runs},
    {'H', any_kind, ClockChange::Begins, "R", ClockChange::Runs},
    {'P', any_kind, ClockChange::Runs, "", ClockChange::Runs},
    {'O', any_kind, ClockChange::Runs, "", ClockChange::Runs},
    {'L', any_kind, ClockChange::Runs, "", ClockChange::Runs},
    {'K', any_kind, ClockChange::Runs, "", ClockChange::Runs},
    {'Y', any_kind, ClockChange::Runs, "", ClockChange::Runs},
    {'E', kinds_ringing_again, ClockChange::Runs, "", ClockChange::Runs},
};

// Every other letter, F and B among them, ends the clock.
constexpr ClockChange clock_change(char letter, char old_letter, int kind) {
  for (const ClockRule& rule : clock_rules) {
    if (rule.letter != letter || !is_of(kind, rule.kinds)) continue;
    for (const char* from = rule.from; *from != '\0'; ++from) {
      if (*from == old_letter) return rule.change_from;
    }
    return rule.change;
  }
  return ClockChange::Ends;
}

}  // namespace lineweir::server
