#include "exchange/auto_operator.h"

#include <algorithm>
#include <utility>

#include "exchange/command_word.h"

namespace lineweir::exchange {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// How likely each turn of the show is.
constexpr double screened_is_ready = 0.70;
constexpr double screened_is_held = 0.15;  // the others are sent away
constexpr double second_on_hybrid = 0.10;
constexpr double aired_is_locked = 0.20;
constexpr double aired_is_held = 0.08;
constexpr double aired_waits_again = 0.05;  // the others are dropped

constexpr Moment held_long_enough = seconds(20);

StudioEvent word(char letter, int line) {
  return {StudioEvent::Kind::Word, 0, ' ', status_item(line, letter)};
}

}  // namespace

AutoOperator::AutoOperator(const AutoOperatorOptions& options, int line_count, std::uint64_t seed)
    : options_(options),
      dice_(seed),
      seats_{{{Role::Screener, 'P', 'P', seconds(2)},
              {Role::Screener, 'O', 'O', seconds(5)},
              {Role::Host, 'N', 'L', seconds(3)},
              {Role::Host, 'C', 'K', seconds(4)},
              {Role::Supervisor, 'B', 'B', seconds(90)}}},
      since_(static_cast<std::size_t>(line_count), Moment{0}) {}

Moment AutoOperator::next_due() const {
  Moment due = never;
  for (const Seat& seat : seats_) due = std::min(due, seat.due);
  return due;
}

std::optional<StudioEvent> AutoOperator::step(const Switchboard& lines) {
  Seat& seat = *std::min_element(seats_.begin(), seats_.end(),
                                 [](const Seat& a, const Seat& b) { return a.due < b.due; });
  switch (seat.role) {
    case Role::Screener:
      return screen(seat, lines);
    case Role::Host:
      return host(seat, lines);
    case Role::Supervisor:
      return supervise(seat, lines);
  }
  return std::nullopt;
}

void AutoOperator::line_changed(int line, Moment now) {
  since_[static_cast<std::size_t>(line)] = now;
}

std::optional<StudioEvent> AutoOperator::screen(Seat& seat, const Switchboard& lines) {
  const Moment now = seat.due;
  if (const auto talking = lines.find(seat.letter)) {
    seat.due = now + dice_.between(seconds(1), seconds(4));
    const double choice = dice_.fraction();
    if (choice < screened_is_ready) return word('S', *talking);
    if (choice < screened_is_ready + screened_is_held) return word('H', *talking);
    return word('F', *talking);
  }
  auto next = longest(lines, ringing_letter);
  if (!next) next = longest(lines, 'H', now - held_long_enough);
  if (!next) {
    seat.due = now + dice_.between(milliseconds(500), milliseconds(1500));
    return std::nullopt;
  }
  seat.due = now + dice_.around(options_.screen_time);
  if (*next == release_number) return word('S', *next);  // unheard, since no handset reaches it
  return word(seat.letter, *next);
}

std::optional<StudioEvent> AutoOperator::host(Seat& seat, const Switchboard& lines) {
  const Moment now = seat.due;
  const auto ready = longest(lines, 'S');
  if (const auto locked = lines.find(seat.locked)) {
    seat.due = now + dice_.between(seconds(2), seconds(6));
    return word('L', *locked);
  }
  if (const auto aired = longest(lines, seat.letter)) {
    seat.due = now + dice_.around(options_.air_time / 3);
    if (ready && dice_.happens(second_on_hybrid)) return word(seat.letter, *ready);
    const double choice = dice_.fraction();
    if (choice < aired_is_locked) return word('L', *aired);
    seat.due = now + dice_.between(seconds(1), seconds(5));
    if (choice < aired_is_locked + aired_is_held) return word('H', *aired);
    if (choice < aired_is_locked + aired_is_held + aired_waits_again) return word('S', *aired);
    return word('F', *aired);
  }
  if (!ready) {
    seat.due = now + dice_.between(seconds(1), seconds(2));
    return std::nullopt;
  }
  seat.due = now + dice_.around(options_.air_time);
  return word(seat.letter, *ready);
}

std::optional<StudioEvent> AutoOperator::supervise(Seat& seat, const Switchboard& lines) {
  const Moment now = seat.due;
  if (busy_line_ >= 0 && lines.letter(busy_line_) == seat.letter) {
    seat.due = now + dice_.between(seconds(120), seconds(360));
    return StudioEvent{StudioEvent::Kind::Idle, std::exchange(busy_line_, -1)};
  }
  seat.due = now + dice_.between(seconds(15), seconds(45));
  const auto idle = longest(lines, idle_letter);
  busy_line_ = idle.value_or(-1);
  if (!idle) return std::nullopt;
  return StudioEvent{StudioEvent::Kind::Busy, *idle};
}

std::optional<int> AutoOperator::longest(const Switchboard& lines, char letter,
                                         Moment until) const {
  std::optional<int> best;
  Moment best_since = until;
  for (int line = 0; line < lines.line_count(); ++line) {
    const Moment since = since_[static_cast<std::size_t>(line)];
    if (lines.letter(line) == letter && since <= until && (!best || since < best_since)) {
      best = line;
      best_since = since;
    }
  }
  return best;
}

}  // namespace lineweir::exchange
