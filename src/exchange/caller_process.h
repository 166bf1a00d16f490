#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "exchange/dice.h"
#include "exchange/studio_event.h"
#include "exchange/switchboard.h"

namespace lineweir::exchange {

// Mean times; each is drawn anew from the exponential distribution.
struct CallerOptions {
  Moment call_every{15'000};      // between two calls; 0 when nobody calls
  Moment ring_patience{40'000};   // until a ringing caller gives up; 0 when they never do
  Moment hold_patience{180'000};  // until a caller in H or S gives up; 0 when they never do
};

// The people outside: they call at random, on a random idle line, and go when nobody answers or
// when they are left waiting. They stay while somebody talks to them.
class CallerProcess {
 public:
  CallerProcess(const CallerOptions& options, int line_count, std::uint64_t seed);

  Moment next_due() const;

  // Does the one thing that is due next and moves on. Nothing happens when a caller finds no idle
  // line. Must be called at its time or later.
  std::optional<StudioEvent> step(const Switchboard& lines);

  // Must be told of every change of a letter.
  void line_changed(int line, char letter, Moment now);

 private:
  std::optional<StudioEvent> call(const Switchboard& lines);

  CallerOptions options_;
  Dice dice_;
  Moment next_call_;
  std::vector<Moment> gives_up_;  // by line
};

}  // namespace lineweir::exchange
