#pragma once

#include "platform/wall_clock.h"

namespace lineweir::platform {

class MachineWallClock final : public WallClock {
 public:
  Moment now() const override;
  DateTime local(Moment moment) const override;
};

}  // namespace lineweir::platform
