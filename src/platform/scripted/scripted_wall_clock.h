#pragma once

#include "platform/event_loop.h"
#include "platform/wall_clock.h"

namespace lineweir::platform {

// A clock that goes with the loop's time from a moment on, in a place whose time is UTC.
class ScriptedWallClock final : public WallClock {
 public:
  // 10:00:00 of January 5th, 2026, as the scripted workstations' clocks begin.
  static constexpr Moment begins{1'767'607'200'000};

  // The loop outlives the clock.
  explicit ScriptedWallClock(const EventLoop& loop) : loop_(loop) {}

  Moment now() const override { return begins + ahead_ + loop_.now(); }
  DateTime local(Moment moment) const override;

  // Somebody sets it, back or forth.
  void move(Milliseconds span) { ahead_ += span; }

 private:
  const EventLoop& loop_;
  Milliseconds ahead_{0};
};

}  // namespace lineweir::platform
