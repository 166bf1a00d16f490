#pragma once

#include <functional>
#include <memory>

#include "platform/event_loop.h"
#include "platform/lease.h"

namespace lineweir::server {

// Which of several servers of the same studios serves: the one that has the lease and can prove it.
// The others stand by and try for it.
class Leadership {
 public:
  static constexpr platform::Milliseconds tried_every{200};
  static constexpr platform::Milliseconds proved_every{250};

  // Both outlive it.
  Leadership(platform::EventLoop& loop, platform::Lease& lease);
  ~Leadership();
  Leadership(const Leadership&) = delete;
  Leadership& operator=(const Leadership&) = delete;

  // Set by the owner before start(). What is lost may be led again, under another epoch.
  std::function<void(platform::Epoch epoch)> on_lead;
  std::function<void()> on_lost;

  void start();
  // Gives the lease back and tries for it no more; nothing is told of that.
  void end();

  // Whether this one may serve at this moment. A process that was stopped hears of the loss by its
  // timers only some time after it goes on; so whoever sends asks here before.
  bool leads() const { return leading_ && proven(); }

  // Tells the loss at once where the last proof has run out.
  void look_at_proof();

 private:
  bool proven() const;
  void try_for_it();
  void granted(const platform::Lease::Grant& grant, platform::Milliseconds asked_at);
  void prove();
  void lead();
  void lose();
  void after(platform::Milliseconds delay, void (Leadership::*call)());

  platform::EventLoop& loop_;
  platform::Lease& lease_;
  platform::Epoch epoch_ = 0;
  // When the last proof was asked for.
  platform::Milliseconds proven_at_{0};
  bool held_ = false;
  bool leading_ = false;
  // Of the calls that are scheduled or asked for: those of an earlier turn are passed over.
  std::shared_ptr<bool> turn_ = std::make_shared<bool>(true);
};

}  // namespace lineweir::server
