#pragma once

#include <sqlite3.h>

#include <chrono>
#include <filesystem>
#include <memory>

namespace lineweir::platform {

struct CloseConnection {
  void operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }
};
using Connection = std::unique_ptr<sqlite3, CloseConnection>;

// How long a step that finds the file locked by another program waits for it; zero for not at all.
using LockWait = std::chrono::milliseconds;

// Opens a file that exists and proves that it is a database which isn't read-only. Nothing in it is
// changed. One of the older Access kind, which is known by its first bytes, is a Failure of its
// own. The wait must outlive the connection.
Connection open_connection(const std::filesystem::path& file, const LockWait& lock_wait);

// From now on each transaction is on the disk when it has ended.
void prepare_for_writing(sqlite3* connection);

// Makes everything between its making and `commit` one step; without `commit` nothing of it stands.
// It has the right to write from the beginning, so that no other writer can come between what is
// read and what is written.
class Transaction {
 public:
  explicit Transaction(sqlite3* connection);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void commit();

 private:
  sqlite3* connection_;
  bool open_ = true;
};

}  // namespace lineweir::platform
