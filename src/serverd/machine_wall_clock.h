#pragma once

#include "platform/wall_clock.h"

namespace lineweir::serverd {

class MachineWallClock final : public platform::WallClock {
 public:
  platform::Moment now() const override;
  platform::DateTime local(platform::Moment moment) const override;
};

}  // namespace lineweir::serverd
