#pragma once

#include <span>
#include <vector>

#include "practice/practice_levels.h"

namespace lineweir::practice {

// Who brought a line to its letter.
enum class Mover { Console, Caller, WrongNumber };

// A line that has another letter than before, at a time of the show. Letters are those of the
// equipment, F for a free line.
struct LetterChange {
  Moment at;
  int line;
  char letter;
  Mover mover;

  bool operator==(const LetterChange&) const = default;
};

// What a show comes to. A call begins when its line rings and ends when the line is free. Wrong
// numbers count among the calls and the calls answered, and nowhere else.
struct Score {
  int calls = 0;
  // Calls that were taken from their ring, to a handset, on air or on hold.
  int answered = 0;
  // Callers who were on air.
  int on_air = 0;
  // The longest time from a caller's first ring until he was first on air, or until he was gone, or
  // until the show's end.
  Moment longest_wait{0};
  // While a segment runs, and no break: the time without anybody on a hybrid between one caller and
  // the next. Before the first caller of the show and behind the last one there is none.
  Moment dead_air{0};
  // Callers whom the console let go before they had been on air for short_talk in all.
  int dropped = 0;
  // Callers who hung up before they had been on air.
  int gave_up = 0;

  bool operator==(const Score&) const = default;
};

inline constexpr Moment short_talk = std::chrono::seconds(15);

// The changes in the order of their times; those behind the end don't count. The parts begin at the
// show's first moment, one behind the other.
Score score_of(std::span<const LetterChange> history, std::span<const ShowPart> parts, Moment end);

}  // namespace lineweir::practice
