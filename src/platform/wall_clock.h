#pragma once

#include <chrono>

#include "base/date_time.h"

namespace lineweir::platform {

// A moment that every machine means alike: milliseconds since the beginning of 1970, UTC.
using Moment = std::chrono::milliseconds;

class WallClock {
 public:
  virtual ~WallClock() = default;

  virtual Moment now() const = 0;

  // The moment by this machine's time zone.
  virtual DateTime local(Moment moment) const = 0;
};

}  // namespace lineweir::platform
