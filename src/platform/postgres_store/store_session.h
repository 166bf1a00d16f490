#pragma once

#include <functional>
#include <string>

#include "platform/lease.h"
#include "platform/postgres_store/postgres_schema.h"

namespace lineweir::platform {

// Under which epoch a server leads how many groups; 0 where there is only one server.
struct LedGroups {
  Epoch epoch = 0;
  int count = 0;
};

// A session in which a store can be worked on: with its tables, and with the right to write.
//
// Of a write whose connection broke nobody knows whether it is still being done: its process at the
// database may have stood still, and may go on later. So each writer has a row of its own that
// holds the number of its present session, and each write begins by holding that row with the
// number in it. A new session waits until nobody holds the row, and changes the number: what the
// former one has done is then done, and what it has not done will never be.
// Where the store is that of one server among several, each write also holds the epoch under which
// this one leads, and fails once another one has taken its groups.
class StoreSession {
 public:
  StoreSession(PostgresAddress address, const PostgresConnection::Services& services,
               PostgresConnection::Patience patience, MissingStore missing = MissingStore::Make,
               LedGroups led = {});

  // Told from the loop; a sentence where it can't be had. What was open is closed before.
  void open(std::function<void(std::string failure)> done);
  bool is_open() const { return ready_ && connection_.is_open(); }
  void close();

  PostgresConnection& connection() { return connection_; }

  // Stands behind the beginning of each transaction that writes; fails with `not_the_writer` where
  // this session isn't the writer's any more.
  PostgresStatement guard() const;
  static constexpr const char* not_the_writer = "22012";

 private:
  void set_up();
  void bring_tables();
  void become_writer();
  void told(const std::string& failure);

  PostgresConnection connection_;
  std::function<void(std::string failure)> opened_;
  bool ready_ = false;
  // Once there was a store, an empty database isn't that one.
  MissingStore missing_;
  // Empty until the database has given one.
  std::string writer_;
  std::int64_t session_ = 0;
  LedGroups led_;
};

}  // namespace lineweir::platform
