#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace lineweir::platform {

// Time on a clock that nobody can set, from some moment before the program began.
using Milliseconds = std::chrono::milliseconds;

// The one loop on which every handler runs. Nothing here is called from another thread.
class EventLoop {
 public:
  using CallId = std::uint64_t;

  virtual ~EventLoop() = default;

  virtual Milliseconds now() const = 0;

  // Runs the call once, `delay` from now. Calls that are due at the same moment run in the order
  // in which they were scheduled.
  virtual CallId schedule(Milliseconds delay, std::function<void()> call) = 0;

  // A call that has run, or was cancelled before, may be cancelled again.
  virtual void cancel(CallId id) = 0;

  // Runs what is due now and returns at once.
  virtual void run_pending() = 0;

  // Runs what is due; if nothing is, waits until something is due and runs it. It returns after a
  // bounded time even when nothing comes, and uses no processor while it waits. A handler that
  // waits for something calls it in a loop and looks at `now()` for its limit.
  virtual void yield() = 0;
};

}  // namespace lineweir::platform
