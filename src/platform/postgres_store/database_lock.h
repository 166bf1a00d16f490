#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/postgres/postgres_connection.h"

namespace lineweir::platform {

// While it is held no other server works on these groups of the database's store, as two would end
// each other's calls, and no tool on the whole store. It belongs to a session of its own and is
// free as soon as that has ended, in whatever way. What is set here is told from the loop.
class DatabaseLock {
 public:
  // Another server that has just been killed holds it for a moment.
  static constexpr Milliseconds waited_for{3'000};

  // The watch is this lock's alone. All outlive this object.
  DatabaseLock(PostgresAddress address, const PostgresConnection::Services& services,
               std::vector<int> groups, PostgresConnection::Patience patience = {});
  ~DatabaseLock();
  DatabaseLock(const DatabaseLock&) = delete;
  DatabaseLock& operator=(const DatabaseLock&) = delete;

  // Tries for it again and again, and also when it was lost.
  void take();

  // Each time that it has been had.
  std::function<void()> on_held;
  // It is another server's, and has been for some time.
  std::function<void(const std::string& why)> on_refused;
  // The session can't be had, or was lost: why, as a sentence.
  std::function<void(const std::string& why)> on_trouble;

  // Tells in a row's first column whether the session that asks it has the whole store now, which
  // nobody else works on.
  static PostgresStatement attempt();
  // The same for one of the servers that share it among themselves; and for one group.
  static PostgresStatement shared_attempt();
  static PostgresStatement group_attempt(int group);
  static std::string refusal(const PostgresAddress& address);

 private:
  void try_it();
  void attempted(const PostgresAnswer& answer);
  void refused(const std::string& why);
  void again(const std::string& trouble);
  void beat();
  void next(Milliseconds delay, void (DatabaseLock::*step)());

  EventLoop& loop_;
  PostgresConnection connection_;
  std::vector<int> groups_;
  EventLoop::CallId next_ = 0;
  Milliseconds refused_since_{0};
  bool refused_ = false;
};

}  // namespace lineweir::platform
