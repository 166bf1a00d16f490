#include "platform/postgres_store/blocking_session.h"

#include <utility>

#include "base/failure.h"

namespace lineweir::platform {
namespace {

// A large store may keep the database busy for a while before it says a word.
constexpr PostgresPatience patience_of_tools{.welcome = Milliseconds{10'000},
                                             .answer = Milliseconds{65'000}};

}  // namespace

BlockingSession::BlockingSession(PostgresAddress address, MissingStore missing,
                                 const std::atomic<bool>& given_up)
    : given_up_(given_up),
      watch_(loop_),
      session_(std::move(address), {loop_, watch_, loop_}, patience_of_tools, missing) {
  bool told = false;
  std::string failed;
  session_.open([&](const std::string& failure) {
    told = true;
    failed = failure;
  });
  wait_for(told);
  if (!failed.empty()) throw Failure(failure_number::database_io, failed);
}

std::vector<PostgresRows> BlockingSession::ask(const PostgresStatements& statements) {
  bool told = false;
  PostgresAnswer came;
  session_.connection().ask(statements, [&](PostgresAnswer answer) {
    told = true;
    came = std::move(answer);
  });
  wait_for(told);
  if (came.failure) throw Failure(failure_number::database_io, came.failure->sentence);
  return std::move(came.rows);
}

void BlockingSession::wait_for(const bool& done) {
  while (!done) {
    if (given_up_) {
      session_.close();
      throw Failure(failure_number::database_io, "It was given up.");
    }
    loop_.yield();
  }
}

}  // namespace lineweir::platform
