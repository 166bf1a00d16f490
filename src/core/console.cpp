#include "core/console.h"

namespace lineweir {

Console::Console(const platform::Services& platform_services)
    : services(platform_services),
      trace(*this),
      messages(*this),
      rows(*this),
      layout(*this),
      call_log(*this),
      decoder(*this),
      port(*this),
      clocks(*this),
      blink(*this),
      startup(*this),
      timers(Lineweir, services.loop) {
  wire_about_box(*this);
}

}  // namespace lineweir
