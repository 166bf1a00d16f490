#include "platform/sqlite/connection.h"

#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>

#include "base/failure.h"
#include "platform/sqlite/sqlite_failure.h"
#include "platform/sqlite/statement.h"
#include "platform/sqlite/wal_index.h"

namespace lineweir::platform {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto busy_pause = std::chrono::milliseconds(1);

// Asked by SQLite each time that it finds the file locked. The pauses stay short: SQLite's own
// grow, and a program that writes row upon row leaves so little time between them that another one
// would come too late again and again.
int wait_for_lock(void* limit, int tries) {
  // Only one file is waited for at a time on a thread.
  thread_local Clock::time_point waiting_since;
  if (tries == 0) waiting_since = Clock::now();
  if (Clock::now() - waiting_since > *static_cast<const LockWait*>(limit)) return 0;
  std::this_thread::sleep_for(busy_pause);
  return 1;
}

// The first bytes of a file in the older kind of database.
constexpr std::string_view older_header("\x00\x01\x00\x00Standard Jet DB", 19);

// Read by SQLite's own handle: closing another one would end the locks that this process has on the
// file, and another program would take the calls that are beside it for nobody's.
bool has_older_header(sqlite3* connection) {
  sqlite3_file* file = nullptr;
  std::array<char, older_header.size()> bytes{};
  if (sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
      file == nullptr || file->pMethods == nullptr) {
    return false;
  }
  file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), 0);
  return std::string_view(bytes.data(), bytes.size()) == older_header;
}

// The write-ahead log shares memory between the programs that have the file open, so it can't be
// used where these may be on several machines: NFS, SMB, CIFS, SMB2.
bool is_shared_by_machines(const std::filesystem::path& file) {
  constexpr std::array<unsigned long, 4> network_systems = {0x6969UL, 0x517BUL, 0xFF534D42UL,
                                                            0xFE534D42UL};
  struct statfs status {};
  if (::statfs(file.c_str(), &status) != 0) return false;
  const auto kind = static_cast<unsigned long>(status.f_type) & 0xFFFFFFFFUL;
  return std::ranges::find(network_systems, kind) != network_systems.end();
}

// The first that reads the file, and so the first that can tell whether it is a database.
void read_first(sqlite3* connection) {
  try {
    query_number(connection, "PRAGMA schema_version");
    renew_wal_index(connection);
  } catch (const Failure& failure) {
    if (failure.number() == failure_number::database_in_use) throw;
    // It may have been written over while others have it open.
    renew_wal_index(connection);
    query_number(connection, "PRAGMA schema_version");
  }
}

void require_utf8(sqlite3* connection) {
  Statement encoding(connection, "PRAGMA encoding");
  if (encoding.step() && encoding.text(0) != "UTF-8") {
    throw sqlite_failure(SQLITE_ERROR, sqlite3_db_filename(connection, "main"),
                         "its text is not UTF-8");
  }
}

}  // namespace

Connection open_connection(const std::filesystem::path& file, const LockWait& lock_wait) {
  sqlite3* opened = nullptr;
  const int result =
      sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  Connection connection(opened);
  if (result != SQLITE_OK) throw sqlite_failure(result, file.string(), sqlite3_errstr(result));
  if (has_older_header(opened)) {
    throw Failure(failure_number::older_database_kind,
                  "The file " + shown_name(file) + " is a database of the older Access kind.");
  }

  if (lock_wait > LockWait::zero()) {
    sqlite3_busy_handler(opened, wait_for_lock, const_cast<LockWait*>(&lock_wait));
  }
  // A name that no column has is a mistake and not a text.
  sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  read_first(opened);
  require_utf8(opened);
  if (sqlite3_db_readonly(opened, "main") != 0) throw sqlite_failure(SQLITE_READONLY, opened);
  return connection;
}

void prepare_for_writing(sqlite3* connection) {
  const bool shared = is_shared_by_machines(sqlite3_db_filename(connection, "main"));
  execute(connection, shared ? "PRAGMA journal_mode = DELETE" : "PRAGMA journal_mode = WAL");
  execute(connection, "PRAGMA synchronous = FULL");
}

Transaction::Transaction(sqlite3* connection) : connection_(connection) {
  execute(connection_, "BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
  // Some failures, such as a full disk, have ended the transaction already.
  if (open_ && sqlite3_get_autocommit(connection_) == 0) {
    sqlite3_exec(connection_, "ROLLBACK", nullptr, nullptr, nullptr);
  }
}

void Transaction::commit() {
  execute(connection_, "COMMIT");
  open_ = false;
}

}  // namespace lineweir::platform
