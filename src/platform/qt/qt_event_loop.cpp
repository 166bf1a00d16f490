#include "platform/qt/qt_event_loop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <algorithm>

namespace lineweir::platform {

namespace {

using Clock = std::chrono::steady_clock;

// An alarm further away than this is set again on the way.
constexpr Milliseconds longest_alarm = std::chrono::hours(24);

}  // namespace

class QtEventLoop::Level {
 public:
  explicit Level(QtEventLoop& loop) : loop_(loop) { ++loop_.depth_; }
  ~Level() {
    --loop_.depth_;
    loop_.set_alarm();
  }
  Level(const Level&) = delete;
  Level& operator=(const Level&) = delete;

 private:
  QtEventLoop& loop_;
};

QtEventLoop::QtEventLoop() {
  alarm_.setSingleShot(true);
  alarm_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&alarm_, &QTimer::timeout, &alarm_, [this] {
    run_due_calls();
    set_alarm();
  });
}

Milliseconds QtEventLoop::now() const {
  return std::chrono::duration_cast<Milliseconds>(Clock::now().time_since_epoch());
}

EventLoop::CallId QtEventLoop::schedule(Milliseconds delay, std::function<void()> call) {
  const CallId id = ++last_id_;
  queue_.emplace(Place{now() + std::max(delay, Milliseconds{0}), id}, std::move(call));
  set_alarm();
  return id;
}

void QtEventLoop::post(std::function<void()> call) {
  QMetaObject::invokeMethod(
      &alarm_,
      [this, posted = std::move(call)]() mutable { schedule(Milliseconds{0}, std::move(posted)); },
      Qt::QueuedConnection);
}

void QtEventLoop::cancel(CallId id) {
  const auto entry = std::ranges::find_if(
      queue_, [id](const auto& waiting) { return waiting.first.second == id; });
  if (entry == queue_.end()) return;
  queue_.erase(entry);
  set_alarm();
}

void QtEventLoop::run_pending() {
  const Level level(*this);
  run_due_calls();
  process_events(false);
}

void QtEventLoop::yield() {
  const Level level(*this);
  const bool ran_calls = run_due_calls();
  if (process_events(false) || ran_calls) return;
  process_events(true);
}

bool QtEventLoop::run_due_calls() {
  const Milliseconds moment = now();
  const CallId last_before = last_id_;
  bool ran_any = false;
  while (!too_deep() && !queue_.empty()) {
    const auto first = queue_.begin();
    const auto [due, id] = first->first;
    // A call of the same moment that was scheduled by one of these comes in the next round, so that
    // a call that schedules itself can't hold up everything else.
    if (due > moment || id > last_before) break;
    const std::function<void()> call = std::move(first->second);
    queue_.erase(first);
    ran_any = true;
    const Level level(*this);
    // The call may run a loop of its own, which must wake for the calls behind this one.
    set_alarm();
    call();
  }
  return ran_any;
}

// The one place that waits. A wait with a time limit given to processEvents() doesn't wait but
// spins, so the limit is a timer of its own, and only whether to wait is told to Qt.
bool QtEventLoop::process_events(bool wait) {
  QEventLoop::ProcessEventsFlags flags = QEventLoop::AllEvents;
  if (too_deep()) flags |= QEventLoop::ExcludeUserInputEvents;
  QTimer limit;
  if (wait) {
    flags |= QEventLoop::WaitForMoreEvents;
    limit.setSingleShot(true);
    limit.setTimerType(Qt::PreciseTimer);
    limit.start(longest_wait);
  }
  return QAbstractEventDispatcher::instance()->processEvents(flags);
}

void QtEventLoop::set_alarm() {
  if (queue_.empty() || too_deep()) {
    alarm_.stop();
    return;
  }
  const Milliseconds due = queue_.begin()->first.first;
  if (alarm_.isActive() && alarm_at_ == due) return;
  alarm_at_ = due;
  const auto left = std::chrono::ceil<Milliseconds>(due - Clock::now().time_since_epoch());
  alarm_.start(std::clamp(left, Milliseconds{0}, longest_alarm));
}

}  // namespace lineweir::platform
