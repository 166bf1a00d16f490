#pragma once

#include <QTimer>
#include <map>
#include <utility>

#include "platform/event_loop.h"

namespace lineweir::platform {

// The loop of a Qt program: scheduled calls stand in one queue, by the moment at which they are due
// and then by the order of scheduling, and one timer wakes the program for the first of them. The
// queue also runs while some other loop of Qt does, such as a dialog's.
//
// A QCoreApplication must exist before this object and outlive it. A scheduled call must not throw.
class QtEventLoop final : public EventLoop {
 public:
  // The longest that one yield() waits.
  static constexpr Milliseconds longest_wait{100};

  // Calls within waits within calls, each on top of the other on the stack. Waits beyond this depth
  // run no calls and pass on no user's input until the depth is less; they still end in time.
  static constexpr int deepest_nesting = 64;

  QtEventLoop();

  Milliseconds now() const override;
  CallId schedule(Milliseconds delay, std::function<void()> call) override;
  void cancel(CallId id) override;
  void run_pending() override;
  void yield() override;

  // Schedules a call for now; the one function that any thread may call. A call that has not run
  // goes with this object.
  void post(std::function<void()> call);

 private:
  // Counts the levels of the stack on which this loop stands, for as long as it lives.
  class Level;
  using Place = std::pair<Milliseconds, CallId>;

  bool too_deep() const { return depth_ >= deepest_nesting; }
  // Runs the calls that are due and that stood in the queue before; false if there was none.
  bool run_due_calls();
  // Lets Qt handle what has come; waits for something to come when told so.
  bool process_events(bool wait);
  void set_alarm();

  std::map<Place, std::function<void()>> queue_;
  CallId last_id_ = 0;
  int depth_ = 0;
  QTimer alarm_;
  Milliseconds alarm_at_{};
};

}  // namespace lineweir::platform
