#include "exchange/caller_process.h"

#include <algorithm>

namespace lineweir::exchange {

CallerProcess::CallerProcess(const CallerOptions& options, int line_count, std::uint64_t seed)
    : options_(options),
      dice_(seed),
      next_call_(options.call_every == Moment{0} ? never : dice_.exponential(options.call_every)),
      gives_up_(static_cast<std::size_t>(line_count), never) {}

Moment CallerProcess::next_due() const {
  return std::min(next_call_, *std::min_element(gives_up_.begin(), gives_up_.end()));
}

std::optional<StudioEvent> CallerProcess::step(const Switchboard& lines) {
  const auto first = std::min_element(gives_up_.begin(), gives_up_.end());
  if (next_call_ <= *first) return call(lines);
  *first = never;
  const int line = static_cast<int>(first - gives_up_.begin());
  return StudioEvent{StudioEvent::Kind::HangUp, line};
}

void CallerProcess::line_changed(int line, char letter, Moment now) {
  Moment patience{0};
  if (letter == ringing_letter) patience = options_.ring_patience;
  if (letter == 'H' || letter == 'S') patience = options_.hold_patience;
  gives_up_[static_cast<std::size_t>(line)] =
      patience == Moment{0} ? never : now + dice_.exponential(patience);
}

std::optional<StudioEvent> CallerProcess::call(const Switchboard& lines) {
  next_call_ += dice_.exponential(options_.call_every);
  std::vector<int> idle;
  for (int line = 0; line < lines.line_count(); ++line) {
    if (lines.letter(line) == idle_letter) idle.push_back(line);
  }
  if (idle.empty()) return std::nullopt;
  const int chosen = dice_.below(static_cast<int>(idle.size()));
  return StudioEvent{StudioEvent::Kind::Call, idle[static_cast<std::size_t>(chosen)]};
}

}  // namespace lineweir::exchange
