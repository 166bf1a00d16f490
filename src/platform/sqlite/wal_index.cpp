#include "platform/sqlite/wal_index.h"

#include <algorithm>
#include <array>
#include <cstddef>

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

// The file's first bytes: two versions of the format, a later one with a write-ahead log, and a
// count of the changes, which stands there twice and by which others know that theirs are old.
constexpr std::size_t header_size = 100;
constexpr std::array<std::size_t, 2> versions_at = {18, 19};
constexpr std::array<std::size_t, 2> change_counts_at = {24, 92};
constexpr std::size_t change_count_size = 4;
constexpr unsigned char without_log = 1;
constexpr unsigned char with_log = 2;

using FileHeader = std::array<unsigned char, header_size>;

void count_up(FileHeader& header, std::size_t place) {
  for (std::size_t digit = place + change_count_size; digit-- > place;) {
    if (++header[digit] != 0) return;
  }
}

void mark_as_logged(sqlite3_file* database) {
  FileHeader header{};
  const int size = static_cast<int>(header.size());
  if (database->pMethods->xRead(database, header.data(), size, 0) != SQLITE_OK) return;
  for (const std::size_t place : versions_at) {
    if (header[place] != without_log) return;
  }
  for (const std::size_t place : versions_at) header[place] = with_log;
  for (const std::size_t place : change_counts_at) count_up(header, place);
  database->pMethods->xWrite(database, header.data(), size, 0);
}

// Whether a program that takes the file for one without a log is about to write to it.
bool is_reserved(sqlite3_file* database) {
  int reserved = 0;
  return database->pMethods->xCheckReservedLock(database, &reserved) != SQLITE_OK || reserved != 0;
}

}  // namespace

bool renew_wal_index(sqlite3* connection) {
  if (sqlite3_get_autocommit(connection) == 0) return false;
  // Between transactions only a write-ahead log is an open file.
  sqlite3_file* database = file_of(connection, SQLITE_FCNTL_FILE_POINTER);
  sqlite3_file* log = file_of(connection, SQLITE_FCNTL_JOURNAL_POINTER);
  if (database == nullptr || log == nullptr || database->pMethods->iVersion < 2) return true;
  const auto lock = [&](int how) {
    return database->pMethods->xShmLock(database, first_lock, locks, how | SQLITE_SHM_EXCLUSIVE);
  };
  if (is_reserved(database) || lock(SQLITE_SHM_LOCK) != SQLITE_OK) return false;
  sqlite3_int64 size = 0;
  if (log->pMethods->xFileSize(log, &size) == SQLITE_OK && size == 0) {
    mark_as_logged(database);
    clear_header(database);
  }
  lock(SQLITE_SHM_UNLOCK);
  return true;
}

}  // namespace lineweir::platform
