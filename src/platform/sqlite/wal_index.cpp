#include "platform/sqlite/wal_index.h"

#include <algorithm>

namespace lineweir::platform {
namespace {

// The shared memory's layout is a part of SQLite's file format: it begins with two copies of a
// header, and where they aren't valid whoever reads next makes all of it anew from the log.
constexpr int index_size = 32768;
constexpr int header_copies_size = 2 * 48;
// The right to write, and behind it that to bring the log into the file.
constexpr int first_lock = 0;
constexpr int locks = 2;

sqlite3_file* file_of(sqlite3* connection, int which) {
  sqlite3_file* file = nullptr;
  const int result = sqlite3_file_control(connection, "main", which, &file);
  return result == SQLITE_OK && file != nullptr && file->pMethods != nullptr ? file : nullptr;
}

void clear_header(sqlite3_file* database) {
  void volatile* index = nullptr;
  const int result = database->pMethods->xShmMap(database, 0, index_size, 0, &index);
  if (result != SQLITE_OK || index == nullptr) return;
  auto* bytes = static_cast<unsigned char volatile*>(index);
  std::fill(bytes, bytes + header_copies_size, static_cast<unsigned char>(0));
  database->pMethods->xShmBarrier(database);
}

}  // namespace

void renew_wal_index(sqlite3* connection) {
  // Between transactions only a write-ahead log is an open file.
  if (sqlite3_get_autocommit(connection) == 0) return;
  sqlite3_file* database = file_of(connection, SQLITE_FCNTL_FILE_POINTER);
  sqlite3_file* log = file_of(connection, SQLITE_FCNTL_JOURNAL_POINTER);
  if (database == nullptr || log == nullptr || database->pMethods->iVersion < 2) return;
  const auto lock = [&](int how) {
    return database->pMethods->xShmLock(database, first_lock, locks, how | SQLITE_SHM_EXCLUSIVE);
  };
  if (lock(SQLITE_SHM_LOCK) != SQLITE_OK) return;
  sqlite3_int64 size = 0;
  if (log->pMethods->xFileSize(log, &size) == SQLITE_OK && size == 0) clear_header(database);
  lock(SQLITE_SHM_UNLOCK);
}

}  // namespace lineweir::platform
