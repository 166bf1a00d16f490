#include "serverd/machine_wall_clock.h"

#include <ctime>

namespace lineweir::serverd {

platform::Moment MachineWallClock::now() const {
  return std::chrono::duration_cast<platform::Moment>(
      std::chrono::system_clock::now().time_since_epoch());
}

platform::DateTime MachineWallClock::local(platform::Moment moment) const {
  const std::time_t seconds = std::chrono::floor<std::chrono::seconds>(moment).count();
  std::tm parts{};
  if (::localtime_r(&seconds, &parts) == nullptr) return {};
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
          parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

}  // namespace lineweir::serverd
