#pragma once

#include <functional>
#include <map>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/event_loop.h"
#include "platform/poster.h"

namespace boost::asio {
class io_context;
}

namespace lineweir::platform {

// Something that sends at the end of a round what was given to it during the round.
class RoundSender {
 public:
  virtual ~RoundSender() = default;
  virtual void send_of_round() = 0;
};

// A loop on which the sockets of Boost.Asio work too. Whatever uses its context is gone before it.
class AsioLoop final : public EventLoop, public Poster {
 public:
  // So long does yield() wait at most.
  static constexpr Milliseconds longest_wait{100};

  AsioLoop();
  ~AsioLoop() override;
  AsioLoop(const AsioLoop&) = delete;
  AsioLoop& operator=(const AsioLoop&) = delete;

  Milliseconds now() const override;
  CallId schedule(Milliseconds delay, std::function<void()> call) override;
  void cancel(CallId id) override;
  // What is scheduled by the calls that run here is left for the next time.
  void run_pending() override;
  void yield() override;
  void post(std::function<void()> call) override;

  // Sends when the handlers of this round have run, and before the loop waits.
  void send_at_end_of_round(std::shared_ptr<RoundSender> sender) {
    senders_.push_back(std::move(sender));
  }

  // Runs before each round's sending; what it takes down is not sent. Set by the owner.
  std::function<void()> before_sending;

  // Runs whatever comes until a handler calls stop().
  void run();
  void stop() { stopped_ = true; }

  boost::asio::io_context& context() { return *context_; }

  // Connections that are still sending what their owners have left behind.
  int farewells() const { return farewells_; }
  void note_farewells(int change) { farewells_ += change; }

 private:
  using Place = std::pair<Milliseconds, CallId>;

  void step(Milliseconds longest);
  bool run_due_calls();
  void run_ready_handlers();
  void send_of_round();

  std::unique_ptr<boost::asio::io_context> context_;
  std::map<Place, std::function<void()>> queue_;
  std::unordered_map<CallId, Milliseconds> due_times_;
  std::vector<std::shared_ptr<RoundSender>> senders_;
  CallId last_id_ = 0;
  bool stopped_ = false;
  int farewells_ = 0;
};

}  // namespace lineweir::platform
