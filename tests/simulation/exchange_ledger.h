#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "exchange/exchange.h"
#include "platform/event_loop.h"
#include "platform/store_records.h"

namespace lineweir::simulation {

using platform::Milliseconds;

// What the exchange of a studio has done in truth, and when a server was there that could know and
// keep it.
class ExchangeLedger {
 public:
  // What is told now is kept for good where all stays well for so long.
  static constexpr Milliseconds kept_after{1000};

  // Looked at several times a second: a server serves, and reaches all that it needs.
  void look(Milliseconds now, bool all_well);
  void note(Milliseconds now, exchange::LineChange change, char before);

  // All was well then and has stayed so until that was kept.
  bool was_kept(Milliseconds moment) const;

  // The number of the call that stands on the line, which no other one has; nothing on a free line.
  std::optional<std::size_t> call_on(int line) const;
  // How often the line's letter has changed.
  std::size_t changes_of(int line) const;
  std::size_t calls() const { return calls_.size(); }

  // When the clock of the line began, where all was well when what made it begin happened; nothing
  // where nobody can know. 0 where none runs.
  std::optional<Milliseconds> clock_of(int line) const;

  // What the records of all calls, whose clocks are right within the tolerance, have wrong.
  // `began` is the wall clock's time when the run's began.
  std::vector<std::string> wrong_in(std::vector<platform::CallRecord> records,
                                    platform::Moment began, Milliseconds tolerance) const;

 private:
  struct Stretch {
    Milliseconds from;
    Milliseconds to;
  };
  struct Call {
    int line;
    Milliseconds began;
    std::optional<Milliseconds> ended;
  };
  struct Change {
    Milliseconds at;
    char before;
    char letter;
  };

  // A server could know the call for long enough to keep it.
  bool must_be_kept(const Call& call) const;

  bool well_ = false;
  std::vector<Stretch> stretches_;
  std::vector<Call> calls_;
  std::map<int, std::size_t> standing_;
  std::map<int, std::vector<Change>> changes_;
};

}  // namespace lineweir::simulation
