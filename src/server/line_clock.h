#pragma once

namespace lineweir::server {

// What a change of its letter does to the clock of a line. It is the consoles' own rule, so that
// one that comes in later shows the clocks of the others.
enum class ClockChange { Runs, Begins, Ends };

struct ClockRule {
  char letter;
  ClockChange change;
  // In place of that, where the line comes from one of these letters.
  const char* from;
  ClockChange change_from;
};

inline constexpr ClockRule clock_rules[] = {
    {'R', ClockChange::Begins, "", ClockChange::Begins},
    {'N', ClockChange::Begins, "LK", ClockChange::Runs},
    {'C', ClockChange::Begins, "LK", ClockChange::Runs},
    {'S', ClockChange::Begins, "R", ClockChange::Runs},
    {'H', ClockChange::Begins, "R", ClockChange::Runs},
    {'P', ClockChange::Runs, "", ClockChange::Runs},
    {'O', ClockChange::Runs, "", ClockChange::Runs},
    {'L', ClockChange::Runs, "", ClockChange::Runs},
    {'K', ClockChange::Runs, "", ClockChange::Runs},
    {'Y', ClockChange::Runs, "", ClockChange::Runs},
};

// Every other letter, F, B and E among them, ends the clock.
constexpr ClockChange clock_change(char letter, char old_letter) {
  for (const ClockRule& rule : clock_rules) {
    if (rule.letter != letter) continue;
    for (const char* from = rule.from; *from != '\0'; ++from) {
      if (*from == old_letter) return rule.change_from;
    }
    return rule.change;
  }
  return ClockChange::Ends;
}

}  // namespace lineweir::server
