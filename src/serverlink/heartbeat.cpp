#include "serverlink/heartbeat.h"

namespace lineweir {

void Heartbeat::beat(platform::Milliseconds now, bool unasked) {
  if (!last_ || now - *last_ > longest_pause) run_began_ = now;
  last_ = now;
  steady_ = steady_ || unasked || now - run_began_ >= proof;
}

}  // namespace lineweir
