#pragma once

#include "platform/event_loop.h"

namespace lineweir::simulation {

using platform::Milliseconds;

// What lies between a server and something that it works with.
struct Cable {
  // From the server, and to it.
  bool there = true;
  bool back = true;
  Milliseconds way{1};

  // And as fast as it should be.
  bool is_whole() const { return there && back && way <= Milliseconds{20}; }
};

}  // namespace lineweir::simulation
