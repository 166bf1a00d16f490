#include "practice/practice_score.h"

#include <algorithm>
#include <map>
#include <optional>

#include "exchange/switchboard.h"
#include "lines/status_letters.h"

namespace lineweir::practice {
namespace {

// A call from its ring on.
struct Call {
  Moment rang;
  bool wrong_number;
  bool answered = false;
  bool was_on_air = false;
  Moment on_air{0};
};

struct Line {
  char letter = exchange::idle_letter;
  Moment since{0};
  std::optional<Call> call;
};

// The part of the time from one moment to the other in which a segment runs.
Moment in_segments(std::span<const ShowPart> parts, Moment from, Moment to) {
  Moment time{0};
  Moment begins{0};
  for (const ShowPart& part : parts) {
    const Moment ends = begins + std::chrono::seconds(part.seconds);
    const Moment common = std::min(to, ends) - std::max(from, begins);
    if (!part.is_break) time += std::max(common, Moment{0});
    begins = ends;
  }
  return time;
}

class Count {
 public:
  explicit Count(std::span<const ShowPart> parts) : parts_(parts) {}

  void take(const LetterChange& change) {
    Line& line = lines_[change.line];
    const bool was_on_air = is_on_air_or_locked(line.letter);
    const bool is_on_air = is_on_air_or_locked(change.letter);
    if (line.call && was_on_air) line.call->on_air += change.at - line.since;
    if (was_on_air != is_on_air) hybrids_change(is_on_air, change.at);
    follow_call(line, change, is_on_air);
    line.letter = change.letter;
    line.since = change.at;
  }

  Score at(Moment end) {
    for (const auto& [number, line] : lines_) {
      if (line.call) note_wait(*line.call, end);
    }
    return score_;
  }

 private:
  void hybrids_change(bool more, Moment now) {
    if (more && talking_ == 0 && silent_since_) {
      score_.dead_air += in_segments(parts_, *silent_since_, now);
    }
    talking_ += more ? 1 : -1;
    if (talking_ == 0) silent_since_ = now;
  }

  void follow_call(Line& line, const LetterChange& change, bool is_on_air) {
    if (change.letter == exchange::ringing_letter) {
      if (line.call) return;
      line.call = Call{change.at, change.mover == Mover::WrongNumber};
      ++score_.calls;
      return;
    }
    if (!line.call) return;
    Call& call = *line.call;
    if (change.letter == exchange::idle_letter) {
      if (!call.wrong_number) end_call(call, change);
      line.call.reset();
      return;
    }
    if (!call.answered) ++score_.answered;
    call.answered = true;
    if (!is_on_air || call.was_on_air) return;
    note_wait(call, change.at);
    call.was_on_air = true;
    if (!call.wrong_number) ++score_.on_air;
  }

  void end_call(const Call& call, const LetterChange& change) {
    note_wait(call, change.at);
    if (change.mover == Mover::Console) {
      if (call.on_air < short_talk) ++score_.dropped;
    } else if (!call.was_on_air) {
      ++score_.gave_up;
    }
  }

  void note_wait(const Call& call, Moment now) {
    if (call.wrong_number || call.was_on_air) return;
    score_.longest_wait = std::max(score_.longest_wait, now - call.rang);
  }

  std::span<const ShowPart> parts_;
  std::map<int, Line> lines_;
  int talking_ = 0;
  std::optional<Moment> silent_since_;
  Score score_;
};

}  // namespace

Score score_of(std::span<const LetterChange> history, std::span<const ShowPart> parts, Moment end) {
  Count count(parts);
  for (const LetterChange& change : history) {
    if (change.at > end) break;
    count.take(change);
  }
  return count.at(end);
}

}  // namespace lineweir::practice
