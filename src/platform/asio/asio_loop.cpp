#include "platform/asio/asio_loop.h"

#include <algorithm>
#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <mutex>

namespace lineweir::platform {

namespace {

using Clock = std::chrono::steady_clock;

// Nothing is due later than this, so that no sum of times overflows.
constexpr Milliseconds longest_delay = std::chrono::hours(24 * 365 * 100);
constexpr Milliseconds longest_run = std::chrono::hours(1);

// The handlers of others may come from other threads; they run on this one.
constexpr int threads_that_run_it = 1;
// So many handlers of sockets go with each round of due calls, so that neither hold up the others,
// and what a burst of them sends to one socket goes out in one piece.
constexpr int handlers_of_round = 16;

}  // namespace

AsioLoop::AsioLoop() : context_(std::make_unique<boost::asio::io_context>(threads_that_run_it)) {
  // Without work the context would count as stopped and wait for nothing.
  context_->get_executor().on_work_started();
}

AsioLoop::~AsioLoop() {
  // Calls may own sockets, which need the context.
  queue_.clear();
  senders_.clear();
  context_.reset();
}

Milliseconds AsioLoop::now() const {
  return std::chrono::duration_cast<Milliseconds>(Clock::now().time_since_epoch());
}

EventLoop::CallId AsioLoop::schedule(Milliseconds delay, std::function<void()> call) {
  const CallId id = ++last_id_;
  const Milliseconds due = now() + std::clamp(delay, Milliseconds{0}, longest_delay);
  queue_.emplace(Place{due, id}, std::move(call));
  due_times_.emplace(id, due);
  return id;
}

void AsioLoop::cancel(CallId id) {
  const auto due = due_times_.find(id);
  if (due == due_times_.end()) return;
  const auto entry = queue_.find(Place{due->second, id});
  // What the call holds may cancel calls too when it goes.
  const std::function<void()> cancelled = std::move(entry->second);
  queue_.erase(entry);
  due_times_.erase(due);
}

void AsioLoop::run_pending() {
  run_due_calls();
  context_->poll();
  send_of_round();
}

void AsioLoop::yield() { step(longest_wait); }

void AsioLoop::run() {
  stopped_ = false;
  while (!stopped_) step(longest_run);
}

void AsioLoop::post(std::function<void()> call) { boost::asio::post(*context_, std::move(call)); }

void AsioLoop::step(Milliseconds longest) {
  const bool ran_any = run_due_calls();
  send_of_round();
  if (!ran_any) {
    const auto limit = Clock::now() + longest;
    const auto first = queue_.empty() ? limit : Clock::time_point(queue_.begin()->first.first);
    context_->run_one_until(std::min(limit, first));
  }
  run_ready_handlers();
  if (!ran_any) run_due_calls();
  send_of_round();
}

void AsioLoop::run_ready_handlers() {
  for (int i = 0; i < handlers_of_round && context_->poll_one() > 0; ++i) {
  }
}

// Whoever sends may give something to others to send.
void AsioLoop::send_of_round() {
  if (before_sending && !senders_.empty()) before_sending();
  while (!senders_.empty()) {
    for (const auto& sender : std::exchange(senders_, {})) sender->send_of_round();
  }
}

bool AsioLoop::run_due_calls() {
  if (queue_.empty()) return false;
  const Milliseconds moment = now();
  const CallId last_before = last_id_;
  bool ran_any = false;
  while (!queue_.empty()) {
    const auto first = queue_.begin();
    const auto [due, id] = first->first;
    // A call of the same moment that was scheduled by one of these comes in the next round, so that
    // a call that schedules itself can't hold up everything else.
    if (due > moment || id > last_before) break;
    const std::function<void()> call = std::move(first->second);
    queue_.erase(first);
    due_times_.erase(id);
    ran_any = true;
    call();
  }
  return ran_any;
}

}  // namespace lineweir::platform
