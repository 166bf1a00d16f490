#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "practice/practice_callers.h"
#include "practice/practice_score.h"
#include "studio/boxed_exchange.h"

namespace lineweir::practice {

// The telephones of a practice show behind their interface box: the exchange, and, while a show
// runs, its callers. Driven wholly by the times passed in, each not before the last.
class PracticeBox {
 public:
  static constexpr int line_count = 10;

  PracticeBox();

  // A show begins, with nobody on the lines; and ends, when all who are there hang up.
  void begin(const LevelRule& level, std::uint64_t seed, Moment now);
  void end(Moment now);

  void receive(std::string_view bytes, Moment now);
  void advance(Moment now);
  Moment next_due() const;
  std::string take_output() { return box_.take_output(); }

  // Every change of a letter in the show that runs, or ran last, by the show's own time.
  const std::vector<LetterChange>& history() const { return history_; }
  const exchange::Switchboard& lines() const { return box_.lines(); }
  // Who is on the line in the show; null where nobody is.
  const Caller* caller_on(int line) const;

 private:
  bool runs() const { return callers_.has_value(); }
  Moment callers_due() const;
  void let_callers_act(Moment now);
  void hang_up_all(Moment now);
  // Takes over what the exchange did. Who is told by the event is nothing where the console did it.
  void note_changes(Moment now, const std::optional<exchange::StudioEvent>& event);

  studio::BoxedExchange box_;
  std::optional<Callers> callers_;
  Moment began_{0};
  std::vector<LetterChange> history_;
  std::string letters_;
};

}  // namespace lineweir::practice
