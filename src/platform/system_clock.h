#pragma once

#include "base/date_time.h"

namespace lineweir::platform {

// The workstation's clock, which the user or a server may set at any time.
class SystemClock {
 public:
  virtual ~SystemClock() = default;

  virtual DateTime now() const = 0;

  // Sets the computer's clock. A missing right is a Failure of number 70, whose description says
  // in one sentence what the user can do.
  virtual void set(const DateTime& moment) = 0;
};

}  // namespace lineweir::platform
