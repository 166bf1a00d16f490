#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "exchange/dice.h"
#include "exchange/studio_event.h"
#include "exchange/switchboard.h"
#include "practice/practice_levels.h"

namespace lineweir::practice {

// One who calls, with all that chance has decided about him. Nothing more is drawn later, so that
// the people of a show don't depend on what the console does to them.
struct Caller {
  Nature nature;
  std::string_view words;
  Moment rings;
  Moment waits;
  Moment talks;
  Moment stays_at_handset;
  Moment pause;
  int more_calls;

  bool operator==(const Caller&) const = default;
};

// The people outside, in a practice show: who calls when, and when they go by themselves. Driven
// wholly by the times and letters passed in; the same level and seed give the same people.
class Callers {
 public:
  Callers(const LevelRule& level, int line_count, std::uint64_t seed);

  Moment next_due() const;

  // Does the one thing that is due next, at its time. Nothing happens when somebody calls and every
  // line is taken.
  std::optional<exchange::StudioEvent> step(const exchange::Switchboard& lines);

  // Must be told of every change of a letter, in order.
  void line_changed(int line, char letter, Moment now);

  // Who is on the line; null for a line without a caller of the show.
  const Caller* on_line(int line) const;

 private:
  struct Line {
    std::optional<Caller> caller;
    char letter = exchange::idle_letter;
    Moment since{0};
    Moment on_air{0};
    Moment goes = exchange::never;
  };
  struct Return {
    Moment at;
    Caller caller;
  };

  Caller draw();
  std::optional<exchange::StudioEvent> arrive(Caller caller, const exchange::Switchboard& lines,
                                              Moment now);
  void come_back(Caller caller, Moment now);
  Moment patience(const Line& line) const;

  LevelRule level_;
  exchange::Dice dice_;
  Moment next_call_;
  int drawn_ = 0;
  int first_words_;
  std::vector<Line> lines_;
  std::vector<Return> returns_;
};

}  // namespace lineweir::practice
