#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "exchange/dice.h"
#include "exchange/studio_event.h"
#include "exchange/switchboard.h"

namespace lineweir::exchange {

struct AutoOperatorOptions {
  Moment screen_time{12'000};  // mean talk of a screener with a caller
  Moment air_time{45'000};     // mean stay of a caller on air
};

// The studio's own people, so that a console with nobody at it shows a lively show. Two screeners
// at the handset positions answer, hold, make ready and send away; a host works both hybrids, locks
// a caller now and then, and sometimes has two at once; somebody takes a line out of service for a
// while. They act through the same command words as every other seat and look at the lines afresh
// each time, so that a console can work beside them.
class AutoOperator {
 public:
  AutoOperator(const AutoOperatorOptions& options, int line_count, std::uint64_t seed);

  Moment next_due() const;

  // Lets the one whose turn is next act, or wait. Must be called at its time or later.
  std::optional<StudioEvent> step(const Switchboard& lines);

  // Must be told of every change of a letter.
  void line_changed(int line, Moment now);

 private:
  enum class Role { Screener, Host, Supervisor };

  struct Seat {
    Role role;
    char letter;  // what its lines show: P or O, N or C
    char locked;  // the same when locked
    Moment due;
  };

  std::optional<StudioEvent> screen(Seat& seat, const Switchboard& lines);
  std::optional<StudioEvent> host(Seat& seat, const Switchboard& lines);
  std::optional<StudioEvent> supervise(Seat& seat, const Switchboard& lines);

  // The line that has shown the letter longest, since `until` at the latest.
  std::optional<int> longest(const Switchboard& lines, char letter, Moment until = never) const;

  AutoOperatorOptions options_;
  Dice dice_;
  std::array<Seat, 5> seats_;
  std::vector<Moment> since_;  // by line: when it got its letter
  int busy_line_ = -1;         // taken out of service by the supervisor
};

}  // namespace lineweir::exchange
