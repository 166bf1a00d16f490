#pragma once

#include <functional>

#include "platform/event_loop.h"

namespace lineweir {

// Lets the loop run until the condition holds; false when it doesn't within 10 seconds.
inline bool wait_until(platform::EventLoop& loop, const std::function<bool()>& condition) {
  const auto limit = loop.now() + std::chrono::seconds(10);
  while (!condition()) {
    if (loop.now() > limit) return false;
    loop.yield();
  }
  return true;
}

// Lets the loop run for some time, whatever happens.
inline void run_for(platform::EventLoop& loop, platform::Milliseconds time) {
  const auto end = loop.now() + time;
  loop.schedule(time, [] {});
  while (loop.now() < end) loop.yield();
}

}  // namespace lineweir
