#include "studio/pacer.h"

#include <utility>

namespace lineweir::studio {

bool Pacer::send(std::string_view text, Moment now) {
  advance(now);
  if (waiting_.size() + text.size() > capacity) return false;
  if (waiting_.empty()) first_is_out_ = Tick(now) + character_time;
  waiting_.insert(waiting_.end(), text.begin(), text.end());
  return true;
}

void Pacer::advance(Moment now) {
  while (!waiting_.empty() && first_is_out_ <= now) {
    ready_ += waiting_.front();
    waiting_.pop_front();
    first_is_out_ += character_time;
  }
}

std::string Pacer::take_ready() { return std::exchange(ready_, {}); }

Moment Pacer::next_due() const {
  return waiting_.empty() ? never : std::chrono::ceil<Moment>(first_is_out_);
}

}  // namespace lineweir::studio
