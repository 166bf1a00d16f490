#pragma once

#include <cstdint>

namespace lineweir {

// Characters that follow one another without a pause are a run of typing. A run belongs to the
// place, a field or a window, in which it began: whoever types a name and doesn't see the window
// change means the rest of it for where the name began.
class TypingRun {
 public:
  using Place = const void*;

  // What comes later than that begins a run of its own.
  static constexpr std::int64_t pause_milliseconds = 400;

  // Whether a key that arrives at the place now may act there.
  bool belongs_to(Place place, std::int64_t now) const {
    return place_ == nullptr || place_ == place || now - last_ >= pause_milliseconds;
  }

  // A character arrives at a place that takes all that comes, such as a field.
  void take(Place place, std::int64_t now) {
    place_ = place;
    last_ = now;
  }

  // A character arrives at another place than that which the run belongs to.
  void go_on(std::int64_t now) { last_ = now; }

  // The user's own hand has led somewhere else.
  void end() { place_ = nullptr; }

 private:
  Place place_ = nullptr;
  std::int64_t last_ = 0;
};

}  // namespace lineweir
