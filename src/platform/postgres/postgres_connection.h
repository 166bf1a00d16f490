#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/descriptor_watch.h"
#include "platform/event_loop.h"
#include "platform/postgres/host_lookup.h"
#include "platform/postgres/postgres_address.h"
#include "platform/postgres/postgres_rows.h"
#include "platform/postgres/postgres_statement.h"

struct pg_conn;
struct pg_result;

namespace lineweir::platform {

// How long a connection waits.
struct PostgresPatience {
  // From its beginning to the database's welcome.
  Milliseconds welcome{5'000};
  // Without a word of an answer.
  Milliseconds answer{10'000};
};

// One session of a database. Nothing here waits: what is asked goes out and comes in beside
// everything else on the loop, and a database that says nothing is given up.
//
// It doesn't come back by itself: whoever has lost it opens it anew, when that suits him.
class PostgresConnection {
 public:
  using Patience = PostgresPatience;

  // The watch is this connection's alone. All outlive it.
  struct Services {
    EventLoop& loop;
    DescriptorWatch& watch;
    Poster& poster;
  };

  PostgresConnection(PostgresAddress address, const Services& services, Patience patience = {});
  // Nobody is told.
  ~PostgresConnection();
  PostgresConnection(const PostgresConnection&) = delete;
  PostgresConnection& operator=(const PostgresConnection&) = delete;

  // Begins a session; told, from the loop, with no failure once it stands. It is closed before.
  void open(std::function<void(std::string failure)> done);
  bool is_open() const { return state_ == State::Open; }
  // Nobody is told of what was asked.
  void close();

  // Sends all statements at once and tells what came of them together, from the loop. Behind one
  // that fails the rest isn't done. Unless they begin a transaction of their own they are one. What
  // was asked before has been answered.
  void ask(const std::vector<PostgresStatement>& statements,
           std::function<void(PostgresAnswer answer)> done);

  // Whether a transaction was begun and has not ended.
  bool is_in_transaction() const;

  const PostgresAddress& address() const { return address_; }

  // Somebody has notified what this session listens to, with the text. The session stays.
  std::function<void(std::string_view text)> on_notified;

  // The session has ended, and nothing was being asked: why, as a sentence. It may be opened anew
  // from within.
  std::function<void(std::string why)> on_lost;

 private:
  enum class State { Closed, LookingUp, Connecting, Open };
  // What a result that is to come belongs to.
  struct Expected {
    enum class Kind { Preparation, Statement, End };
    Kind kind;
    std::string sql;
  };
  struct Finish {
    void operator()(pg_conn* session) const;
  };

  void start(const std::vector<PostgresHost>& hosts);
  void go_on_connecting();
  void welcome();
  // Ends what is being done with a sentence about the connection.
  void fail(const std::string& sentence);
  // The same with what libpq tells.
  void fail_as_told(const std::string& what);
  void end_session();

  bool send(const PostgresStatement& statement);
  void wait_for_words();
  void read_words();
  void take_notifications();
  // Whether all has come that was expected.
  bool take_results();
  void take(pg_result* result);
  PostgresFailure failure_of(const pg_result* result) const;
  void give_time();
  void watch_time();

  PostgresAddress address_;
  EventLoop& loop_;
  DescriptorWatch& watch_;
  Patience patience_;
  HostLookup lookup_;

  State state_ = State::Closed;
  std::unique_ptr<pg_conn, Finish> session_;
  std::function<void(std::string failure)> opened_;
  // Which of the hosts is tried first: another one after one that said nothing.
  std::size_t first_host_ = 0;
  Milliseconds deadline_{0};
  EventLoop::CallId timer_ = 0;

  // Names of statements by their texts.
  std::map<std::string, std::string> prepared_;
  unsigned names_ = 0;
  std::deque<Expected> expected_;
  PostgresAnswer answer_;
  std::function<void(PostgresAnswer answer)> answered_;
};

}  // namespace lineweir::platform
