#pragma once

#include <atomic>

#include "platform/asio/asio_descriptor_watch.h"
#include "platform/asio/asio_loop.h"
#include "platform/postgres_store/record_statements.h"
#include "platform/postgres_store/store_session.h"

namespace lineweir::platform {

// A session for who waits for its answers: a thread, or a program that does nothing else. It has a
// loop of its own. Everything throws a Failure.
class BlockingSession {
 public:
  // The flag, which outlives this object, may be set by another thread: what is waited for is then
  // given up.
  BlockingSession(PostgresAddress address, MissingStore missing, const std::atomic<bool>& given_up);
  BlockingSession(const BlockingSession&) = delete;
  BlockingSession& operator=(const BlockingSession&) = delete;

  std::vector<PostgresRows> ask(const PostgresStatements& statements);
  PostgresStatement guard() const { return session_.guard(); }

 private:
  void wait_for(const bool& done);

  const std::atomic<bool>& given_up_;
  AsioLoop loop_;
  AsioDescriptorWatch watch_;
  StoreSession session_;
};

}  // namespace lineweir::platform
