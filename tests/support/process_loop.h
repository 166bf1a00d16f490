#pragma once

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
  ProcessLoop(const ProcessLoop&) = delete;
  ProcessLoop& operator=(const ProcessLoop&) = delete;

  platform::Milliseconds now() const override { return scaled(world_.now(), rate_); }

  CallId schedule(platform::Milliseconds delay, std::function<void()> call) override {
    return world_.schedule(scaled(delay, 1 / rate_), [this, call = std::move(call)] {
      if (!stopped_) return call();
      waiting_.push_back(call);
    });
  }
  void cancel(CallId id) override { world_.cancel(id); }
  void run_pending() override { world_.run_pending(); }
  void yield() override { world_.yield(); }

  bool stopped() const { return stopped_; }
  void stop() { stopped_ = true; }
  void go_on() {
    stopped_ = false;
    for (auto& call : std::exchange(waiting_, {})) {
      world_.schedule(platform::Milliseconds{0}, std::move(call));
    }
  }

 private:
  static platform::Milliseconds scaled(platform::Milliseconds time, double rate) {
    return platform::Milliseconds(
        static_cast<platform::Milliseconds::rep>(static_cast<double>(time.count()) * rate));
  }

  platform::VirtualEventLoop& world_;
  double rate_;
  bool stopped_ = false;
  std::vector<std::function<void()>> waiting_;
};

}  // namespace lineweir::test
