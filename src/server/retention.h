#pragma once

#include <memory>

#include "platform/event_loop.h"
#include "platform/store.h"
#include "server/context.h"
#include "server/server_options.h"

namespace lineweir::server {

// Forgets each night, and soon after the server has begun, who called in calls that are older than
// the station keeps that, and what was noted of callers until a day that has passed. What it has
// done stands in the audit.
class Retention {
 public:
  // By this machine's clock, when nobody is on air.
  static constexpr int hour_of_night = 4;
  static constexpr platform::Milliseconds first_after{600'000};
  // In one write, so that others come in between.
  static constexpr std::size_t piece = 500;

  Retention(const Context& context, platform::Store& store);
  ~Retention();
  Retention(const Retention&) = delete;
  Retention& operator=(const Retention&) = delete;

  void set(const RetentionOptions& options) { options_ = options; }
  void start();

 private:
  void look_at_clock();
  void forget();
  void forget_calls(platform::Moment before, std::size_t forgotten);
  void schedule(platform::Milliseconds delay, void (Retention::*step)());

  const Context& context_;
  platform::Store& store_;
  RetentionOptions options_;
  // The last day on which it forgot at that hour or later.
  std::string day_;
  platform::EventLoop::CallId next_ = 0;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace lineweir::server
