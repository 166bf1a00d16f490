#include "platform/scripted/virtual_event_loop.h"

#include <algorithm>
#include <limits>

#include "base/failure.h"

namespace lineweir::platform {
namespace {

constexpr Milliseconds idle_step{1};
constexpr EventLoop::CallId any_call = std::numeric_limits<EventLoop::CallId>::max();

// Waits within waits deeper than this let time pass and nothing run.
constexpr int deepest_wait = 64;

class Nesting {
 public:
  explicit Nesting(int& depth) : depth_(depth) { ++depth_; }
  ~Nesting() { --depth_; }
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;

 private:
  int& depth_;
};

}  // namespace

EventLoop::CallId VirtualEventLoop::schedule(Milliseconds delay, std::function<void()> call) {
  const CallId id = next_id_++;
  const Milliseconds due = now_ + std::max(delay, Milliseconds{0});
  calls_.emplace(Key{due, id}, std::move(call));
  due_times_.emplace(id, due);
  return id;
}

void VirtualEventLoop::cancel(CallId id) {
  const auto found = due_times_.find(id);
  if (found == due_times_.end()) return;
  calls_.erase(Key{found->second, id});
  due_times_.erase(found);
}

void VirtualEventLoop::run_pending() {
  const CallId before = next_id_;
  while (run_first(now_, before)) {
  }
}

void VirtualEventLoop::yield() {
  if (depth_ > 0 && now_ > wait_end_) {
    throw Failure(failure_number::invalid_argument, "A wait has no end");
  }
  if (depth_ > deepest_wait) {
    now_ += idle_step;
    return;
  }
  run_pending();
  now_ = calls_.empty() ? now_ + idle_step : std::max(now_, calls_.begin()->first.first);
  run_pending();
}

void VirtualEventLoop::advance(Milliseconds span, const std::function<void()>& after_each) {
  const Milliseconds end = now_ + std::max(span, Milliseconds{0});
  while (run_first(end, any_call)) {
    if (after_each) after_each();
  }
  now_ = std::max(now_, end);
}

void VirtualEventLoop::run(const std::function<void()>& handler) {
  if (depth_ == 0) wait_end_ = now_ + longest_wait;
  const Nesting nesting(depth_);
  handler();
}

bool VirtualEventLoop::run_first(Milliseconds until, CallId before) {
  auto first = calls_.begin();
  while (first != calls_.end() && first->first.first <= until && first->first.second >= before) {
    ++first;
  }
  if (first == calls_.end() || first->first.first > until) return false;
  const std::function<void()> call = std::move(first->second);
  now_ = std::max(now_, first->first.first);
  due_times_.erase(first->first.second);
  calls_.erase(first);
  run(call);
  return true;
}

}  // namespace lineweir::platform
