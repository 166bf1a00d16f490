#pragma once

#include <ctime>
#include <functional>

#include "platform/system_clock.h"

namespace lineweir::platform {

// The computer's clock in the local time zone.
class QtSystemClock final : public SystemClock {
 public:
  // Sets the system's clock, UTC; gives 0 or the system's error number.
  using SetTime = std::function<int(const timespec&)>;

  QtSystemClock();
  explicit QtSystemClock(SetTime set_time) : set_time_(std::move(set_time)) {}

  DateTime now() const override;
  // A moment that the calendar doesn't have is a Failure of number 5.
  void set(const DateTime& moment) override;

 private:
  SetTime set_time_;
};

}  // namespace lineweir::platform
