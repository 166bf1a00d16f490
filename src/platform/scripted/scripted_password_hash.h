#pragma once

#include <deque>
#include <string>

#include "platform/event_loop.h"
#include "platform/password_hash.h"

namespace lineweir::platform {

// Hashes that hide nothing and take virtual time alone, one behind the other.
class ScriptedPasswordHash final : public PasswordHash {
 public:
  // The loop outlives this object.
  explicit ScriptedPasswordHash(EventLoop& loop) : loop_(loop) {}
  ~ScriptedPasswordHash() override { forget_what_waits(); }
  ScriptedPasswordHash(const ScriptedPasswordHash&) = delete;
  ScriptedPasswordHash& operator=(const ScriptedPasswordHash&) = delete;

  void hash(std::string password, std::function<void(std::string hash)> done) override;
  void verify(std::string hash, std::string password, std::function<void(bool fits)> done) override;
  std::size_t waiting() const override { return works_.size(); }

  // From now on each takes so long.
  void take(Milliseconds each) { each_takes_ = each; }
  // What waits is lost and nobody is told, as at the end of a process.
  void forget_what_waits();

 private:
  void add(std::function<void()> work);
  void schedule_next();

  EventLoop& loop_;
  Milliseconds each_takes_{0};
  std::deque<std::function<void()>> works_;
  EventLoop::CallId next_ = 0;
  bool scheduled_ = false;
  int salt_ = 0;
};

}  // namespace lineweir::platform
