#pragma once

#include <optional>

#include "platform/event_loop.h"

namespace lineweir {

// Whether a server sends its time by itself: it does once its times have come at least once a
// second, with half a second for the way, for three seconds. Answers to the regular poll are too
// far apart to count.
class Heartbeat {
 public:
  static constexpr platform::Milliseconds longest_pause{1500};
  static constexpr platform::Milliseconds proof{3000};

  // The server's time has come. One that is known to be its own is proof enough.
  void beat(platform::Milliseconds now, bool own = false);

  // True from the proof on, however long nothing comes.
  bool steady() const { return steady_; }

 private:
  std::optional<platform::Milliseconds> last_;
  platform::Milliseconds run_began_{0};
  bool steady_ = false;
};

}  // namespace lineweir
