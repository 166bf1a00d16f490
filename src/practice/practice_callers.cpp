#include "practice/practice_callers.h"

#include <algorithm>
#include <utility>

#include "lines/status_letters.h"
#include "practice/practice_words.h"

namespace lineweir::practice {
namespace {

using exchange::Dice;
using exchange::never;
using exchange::StudioEvent;

// The first caller is there soon, so that nobody sits before an empty board.
constexpr Moment first_call_after = std::chrono::seconds(3);
// One who was on air for less wasn't heard.
constexpr Moment heard_after = std::chrono::seconds(5);
// Somebody who is put on air again at the end of his talk says goodbye at least.
constexpr Moment goodbye = std::chrono::seconds(1);

Moment drawn_between(Dice& dice, const Between& range) {
  return dice.between(range.least, range.most);
}

// Behind a step that parts the callers from one another whatever their number, each has words of
// his own until all words are used up.
template <std::size_t Count>
std::string_view words_of(const std::array<std::string_view, Count>& all, int number) {
  return all[static_cast<std::size_t>(number) % Count];
}

bool is_at_handset(char letter) { return letter == 'P' || letter == 'O'; }

}  // namespace

Callers::Callers(const LevelRule& level, int line_count, std::uint64_t seed)
    : level_(level),
      dice_(seed),
      next_call_(first_call_after),
      first_words_(dice_.below(static_cast<int>(show_callers.size()))),
      lines_(static_cast<std::size_t>(line_count)) {}

Moment Callers::next_due() const {
  Moment due = next_call_;
  for (const Return& next : returns_) due = std::min(due, next.at);
  for (const Line& line : lines_) due = std::min(due, line.goes);
  return due;
}

std::optional<StudioEvent> Callers::step(const exchange::Switchboard& lines) {
  const Moment now = next_due();
  for (std::size_t line = 0; line < lines_.size(); ++line) {
    if (lines_[line].goes != now) continue;
    lines_[line].goes = never;
    return StudioEvent{StudioEvent::Kind::HangUp, static_cast<int>(line)};
  }
  const auto back = std::ranges::find(returns_, now, &Return::at);
  if (back != returns_.end()) {
    const Caller caller = back->caller;
    returns_.erase(back);
    return arrive(caller, lines, now);
  }
  next_call_ += dice_.exponential(level_.call_every);
  return arrive(draw(), lines, now);
}

void Callers::line_changed(int number, char letter, Moment now) {
  Line& line = lines_[static_cast<std::size_t>(number)];
  if (is_on_air_or_locked(line.letter)) line.on_air += now - line.since;
  line.letter = letter;
  line.since = now;
  line.goes = never;
  if (!line.caller) return;
  if (letter != exchange::idle_letter) {
    const Moment stays = patience(line);
    if (stays != never) line.goes = now + stays;
    return;
  }
  const bool unheard = line.on_air < heard_after;
  if (unheard && rule_of(line.caller->nature).returns) come_back(*line.caller, now);
  line = {};
}

const Caller* Callers::on_line(int line) const {
  const auto place = static_cast<std::size_t>(line);
  return line >= 0 && place < lines_.size() && lines_[place].caller ? &*lines_[place].caller
                                                                    : nullptr;
}

Caller Callers::draw() {
  int number = dice_.below(100);
  std::size_t nature = 0;
  while (number >= level_.of_hundred[nature]) number -= level_.of_hundred[nature++];
  const NatureRule& rule = nature_rules[nature];
  const int place = first_words_ + drawn_++;
  return {rule.nature,
          rule.nature == Nature::WrongNumber ? words_of(wrong_numbers, place)
                                             : words_of(show_callers, place),
          drawn_between(dice_, rule.rings),
          drawn_between(dice_, rule.waits),
          drawn_between(dice_, rule.talks),
          drawn_between(dice_, rule.stays_at_handset),
          drawn_between(dice_, rule.pause),
          rule.more_calls};
}

std::optional<StudioEvent> Callers::arrive(Caller caller, const exchange::Switchboard& lines,
                                           Moment now) {
  const auto free = lines.find(exchange::idle_letter);
  if (!free) {
    come_back(caller, now);
    return std::nullopt;
  }
  Line& line = lines_[static_cast<std::size_t>(*free)];
  line = {};
  line.caller = caller;
  return StudioEvent{StudioEvent::Kind::Call, *free};
}

void Callers::come_back(Caller caller, Moment now) {
  if (caller.more_calls == 0) return;
  --caller.more_calls;
  returns_.push_back({now + caller.pause, caller});
}

Moment Callers::patience(const Line& line) const {
  const Caller& caller = *line.caller;
  if (line.letter == exchange::ringing_letter) return caller.rings;
  if (is_on_air_or_locked(line.letter)) return std::max(caller.talks - line.on_air, goodbye);
  if (is_at_handset(line.letter)) {
    return caller.stays_at_handset == Moment{0} ? never : caller.stays_at_handset;
  }
  return caller.waits;
}

}  // namespace lineweir::practice
