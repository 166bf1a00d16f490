#include "exchange/simulated_exchange.h"

#include <algorithm>

namespace lineweir::exchange {
namespace {

// Who calls must not follow the same chances as when.
constexpr std::uint64_t number_seed_offset = 0x9e3779b97f4a7c15U;

constexpr Moment longest_sleep = std::chrono::hours(1);

}  // namespace

SimulatedExchange::SimulatedExchange(platform::EventLoop& loop,
                                     const SimulatedExchangeOptions& options)
    : loop_(loop),
      began_(loop.now()),
      lines_(options.line_count),
      callers_(options.callers, options.line_count, options.seed),
      dice_(options.seed + number_seed_offset) {
  schedule_life();
}

SimulatedExchange::~SimulatedExchange() { loop_.cancel(next_life_); }

void SimulatedExchange::obey(std::string_view word) {
  const auto command = parse_word(word);
  if (!command || (names_line(command->action) && !lines_.has_line(command->number))) return;
  tell(lines_.obey(*command), {});
}

void SimulatedExchange::take_to_position(int line, int position) {
  tell(lines_.take_to_position(line, position), {});
}

bool SimulatedExchange::arrive(int line, std::string number) {
  const LineChanges changes = lines_.ring(line);
  tell(changes, number);
  return !changes.empty();
}

bool SimulatedExchange::leave(int line) {
  const LineChanges changes = lines_.hang_up(line);
  tell(changes, {});
  return !changes.empty();
}

void SimulatedExchange::quieten() {
  is_quiet_ = true;
  schedule_life();
}

void SimulatedExchange::tell(const LineChanges& changes, const std::string& number) {
  for (const LineChange& change : changes) callers_.line_changed(change.line, change.letter, now());
  schedule_life();
  if (!on_change) return;
  for (const LineChange& change : changes) on_change(change, number);
}

void SimulatedExchange::live() {
  next_life_ = 0;
  if (callers_.next_due() <= now()) {
    const auto event = callers_.step(lines_);
    if (event && event->kind == StudioEvent::Kind::Call) {
      arrive(event->line, number_of_a_caller());
    } else if (event && event->kind == StudioEvent::Kind::HangUp) {
      leave(event->line);
    }
  }
  schedule_life();
}

void SimulatedExchange::schedule_life() {
  loop_.cancel(next_life_);
  next_life_ = 0;
  const Moment due = callers_.next_due();
  if (due == never || is_quiet_) return;
  const Moment wait = std::clamp(due - now(), Moment{0}, longest_sleep);
  next_life_ = loop_.schedule(wait, [this] { live(); });
}

std::string SimulatedExchange::number_of_a_caller() {
  const std::string last = std::to_string(dice_.below(10000));
  return "555 " + std::string(4 - last.size(), '0') + last;
}

}  // namespace lineweir::exchange
