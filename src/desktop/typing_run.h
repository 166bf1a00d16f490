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
  // The same behind a choice, as the user looks for what has opened.
  static constexpr std::int64_t choice_milliseconds = 1000;

  // Whether a key that arrives at the place now may act there.
  bool belongs_to(Place place, std::int64_t now) const {
    return place_ == nullptr || place_ == place || now - last_ >= pause_;
  }

  // A character arrives at a place that takes all that comes, such as a field.
  void take(Place place, std::int64_t now) {
    place_ = place;
    go_on(now);
  }

  // The user chooses something at the place.
  void choose(Place place, std::int64_t now) {
    take(place, now);
    pause_ = choice_milliseconds;
  }

  // Whether nothing has been typed since a choice.
  bool is_choice() const { return pause_ == choice_milliseconds; }

  // A character arrives at another place than that which the run belongs to.
  void go_on(std::int64_t now) {
    last_ = now;
    pause_ = pause_milliseconds;
  }

  // The user's own hand has led somewhere else.
  void end() { place_ = nullptr; }

 private:
  Place place_ = nullptr;
  std::int64_t last_ = 0;
  std::int64_t pause_ = pause_milliseconds;
};

}  // namespace lineweir
