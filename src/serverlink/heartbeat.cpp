#include "serverlink/heartbeat.h"

namespace lineweir {

void Heartbeat::beat(platform::Milliseconds now, bool own) {
  if (!last_ || now - *last_ > longest_pause) run_began_ = now;
  last_ = now;
  steady_ = steady_ || own || now - run_began_ >= proof;
}

}  // namespace lineweir
