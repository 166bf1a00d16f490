#pragma once

#include <map>
#include <utility>
#include <vector>

#include "platform/scripted/virtual_event_loop.h"

namespace lineweir::test {

// The loop of one process among several on virtual time: its machine's clock may run fast or slow,
// and the process can be stopped. What falls due meanwhile runs when it goes on.
class ProcessLoop final : public platform::EventLoop {
 public:
  // `rate`: how fast the machine's clock runs; 1 for one that is right.
  ProcessLoop(platform::VirtualEventLoop& world, double rate) : world_(world), rate_(rate) {}
  ~ProcessLoop() override {
    for (const auto& [id, call] : calls_) world_.cancel(call);
  }
  ProcessLoop(const ProcessLoop&) = delete;
  ProcessLoop& operator=(const ProcessLoop&) = delete;

  platform::Milliseconds now() const override { return scaled(world_.now(), rate_); }

  CallId schedule(platform::Milliseconds delay, std::function<void()> call) override {
    const CallId id = ++last_id_;
    calls_[id] = world_.schedule(scaled(delay, 1 / rate_),
                                 [this, id, call = std::move(call)] { run(id, call); });
    return id;
  }
  void cancel(CallId id) override {
    std::erase_if(waiting_, [id](const auto& waiting) { return waiting.first == id; });
    const auto found = calls_.find(id);
    if (found == calls_.end()) return;
    world_.cancel(found->second);
    calls_.erase(found);
  }
  void run_pending() override { world_.run_pending(); }
  void yield() override { world_.yield(); }

  bool stopped() const { return stopped_; }
  void stop() { stopped_ = true; }
  void go_on() {
    stopped_ = false;
    for (auto& [id, call] : std::exchange(waiting_, {})) {
      calls_[id] = world_.schedule(platform::Milliseconds{0},
                                   [this, id, call = std::move(call)] { run(id, call); });
    }
  }

 private:
  static platform::Milliseconds scaled(platform::Milliseconds time, double rate) {
    return platform::Milliseconds(
        static_cast<platform::Milliseconds::rep>(static_cast<double>(time.count()) * rate));
  }

  void run(CallId id, const std::function<void()>& call) {
    calls_.erase(id);
    if (!stopped_) return call();
    waiting_.emplace_back(id, call);
  }

  platform::VirtualEventLoop& world_;
  double rate_;
  bool stopped_ = false;
  CallId last_id_ = 0;
  // In the world's loop.
  std::map<CallId, CallId> calls_;
  // Due while the process is stopped.
  std::vector<std::pair<CallId, std::function<void()>>> waiting_;
};

}  // namespace lineweir::test
