#pragma once

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "platform/event_loop.h"

namespace lineweir::test {

// A real loop of which a stretch of time can be left out, as nobody wants to wait for it.
class SkippingLoop final : public platform::EventLoop {
 public:
  // The real loop outlives this one.
  explicit SkippingLoop(platform::EventLoop& real) : real_(real) {}
  ~SkippingLoop() override {
    for (const auto& [id, call] : calls_) real_.cancel(call.real_id);
  }

  platform::Milliseconds now() const override { return real_.now() + skipped_; }

  CallId schedule(platform::Milliseconds delay, std::function<void()> run) override {
    const CallId id = ++last_id_;
    calls_[id] = {now() + delay, 0, std::move(run)};
    arm(id);
    return id;
  }

  void cancel(CallId id) override {
    const auto found = calls_.find(id);
    if (found == calls_.end()) return;
    real_.cancel(found->second.real_id);
    calls_.erase(found);
  }

  void run_pending() override { real_.run_pending(); }
  void yield() override { real_.yield(); }

  // Time goes on by that much at once. What is due within it runs next, each call once.
  void skip(platform::Milliseconds time) {
    skipped_ += time;
    std::vector<std::pair<platform::Milliseconds, CallId>> order;
    for (const auto& [id, call] : calls_) order.emplace_back(call.due, id);
    std::ranges::sort(order);
    for (const auto& [due, id] : order) {
      real_.cancel(calls_.at(id).real_id);
      arm(id);
    }
  }

 private:
  struct Call {
    platform::Milliseconds due;
    CallId real_id;
    std::function<void()> run;
  };

  void arm(CallId id) {
    Call& call = calls_.at(id);
    const auto delay = std::max(call.due - now(), platform::Milliseconds(0));
    call.real_id = real_.schedule(delay, [this, id] {
      const auto run = std::move(calls_.at(id).run);
      calls_.erase(id);
      run();
    });
  }

  platform::EventLoop& real_;
  platform::Milliseconds skipped_{0};
  CallId last_id_ = 0;
  std::map<CallId, Call> calls_;
};

}  // namespace lineweir::test
