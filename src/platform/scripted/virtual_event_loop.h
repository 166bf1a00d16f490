#pragma once

#include <cstddef>
#include <map>
#include <unordered_map>
#include <utility>

#include "platform/event_loop.h"

namespace lineweir::platform {

// A loop whose time stands still until it is told to move. Handlers that wait move it themselves:
// each yield goes on to the next thing due.
//
// A handler, whatever it runs in turn, may wait for `longest_wait` in all; a yield behind that is
// a Failure, so that a wait for something that can't come any more ends.
class VirtualEventLoop final : public EventLoop {
 public:
  static constexpr Milliseconds longest_wait = std::chrono::hours(1);

  Milliseconds now() const override { return now_; }
  CallId schedule(Milliseconds delay, std::function<void()> call) override;
  void cancel(CallId id) override;
  // What is scheduled by the calls that run here is left for the next time.
  void run_pending() override;
  void yield() override;

  // Lets `span` pass: what falls due runs in the order of its time, and the clock ends at the end
  // of the span, or later if a handler waited for longer. `after_each` runs after each call that
  // was not made from within another.
  void advance(Milliseconds span, const std::function<void()>& after_each = {});

  // Runs a handler as the loop runs one that is due.
  void run(const std::function<void()>& handler);

  std::size_t scheduled() const { return calls_.size(); }

 private:
  using Key = std::pair<Milliseconds, CallId>;

  // Runs the first call that was scheduled before `before` and is due by `until`.
  bool run_first(Milliseconds until, CallId before);

  Milliseconds now_{0};
  CallId next_id_ = 1;
  std::map<Key, std::function<void()>> calls_;
  std::unordered_map<CallId, Milliseconds> due_times_;
  int depth_ = 0;
  Milliseconds wait_end_{0};
};

}  // namespace lineweir::platform
