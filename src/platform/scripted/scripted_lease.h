#pragma once

#include <cstdint>
#include <memory>

#include "platform/lease.h"

namespace lineweir::platform {

// Grants one lease as a database does: to a session, until that ends or hasn't been heard from for
// 2 seconds. Its clock is that of its loop.
class LeaseOffice {
 public:
  using Session = std::uint64_t;

  explicit LeaseOffice(EventLoop& loop) : loop_(loop) {}

  EventLoop& loop() const { return loop_; }
  Session open() { return ++last_session_; }
  // Of the last holder.
  Epoch epoch() const { return epoch_; }
  std::optional<Lease::Grant> take(Session session);
  bool prove(Session session);
  // The session ends; in good order the next holder needn't wait for its last proof.
  void close(Session session, bool in_order);

  // The holder's connection is reset, which is all the office knows of it.
  void reset_holder() { holder_ = 0; }

  // As the end of the database: all sessions have ended, and nobody is answered.
  void stop();
  void start() { runs_ = true; }
  bool runs() const { return runs_; }

 private:
  void drop_silent_holder();

  EventLoop& loop_;
  Session last_session_ = 0;
  // Older ones ended with the database.
  Session first_open_ = 1;
  Session holder_ = 0;
  Epoch epoch_ = 0;
  Milliseconds heard_at_{0};
  bool ever_proven_ = false;
  bool runs_ = true;
};

// One process's way to the office; either direction can be cut and takes its time.
class ScriptedLease final : public Lease {
 public:
  static constexpr Milliseconds answered_within{700};

  // Both outlive it; `loop` is the process's own.
  ScriptedLease(LeaseOffice& office, EventLoop& loop) : office_(office), loop_(loop) {}
  // As the end of the process, which the office hears of where it is reached.
  ~ScriptedLease() override;

  void take(std::function<void(std::optional<Grant> grant)> done) override;
  void prove(std::function<void(bool held)> done) override;
  void give_back() override;

  bool reaches = true;
  bool hears = true;
  Milliseconds way{1};

 private:
  template <class Answer>
  void ask(std::function<Answer()> question, std::function<void(Answer)> done);
  void close(bool in_order);

  LeaseOffice& office_;
  EventLoop& loop_;
  LeaseOffice::Session session_ = 0;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace lineweir::platform
