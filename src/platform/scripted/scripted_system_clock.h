#pragma once

#include <cstdint>
#include <vector>

#include "platform/event_loop.h"
#include "platform/system_clock.h"

namespace lineweir::platform {

// A calendar clock that goes with the loop's time. Setting it never moves the loop.
class ScriptedSystemClock final : public SystemClock {
 public:
  // The loop outlives the clock.
  explicit ScriptedSystemClock(const EventLoop& loop);

  DateTime now() const override;
  // A moment that the calendar doesn't have is a Failure of number 5.
  void set(const DateTime& moment) override;

  // Sets the clock by another hand than the console's; same failure.
  void put(const DateTime& moment);

  // What the console has set the clock to since the last call.
  std::vector<DateTime> take_settings();

 private:
  const EventLoop& loop_;
  // The clock showed `base_seconds_`, counted from 1970, when the loop's time was `base_time_`.
  std::int64_t base_seconds_ = 0;
  Milliseconds base_time_{0};
  std::vector<DateTime> settings_;
};

}  // namespace lineweir::platform
