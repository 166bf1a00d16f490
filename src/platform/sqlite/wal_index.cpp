#include "platform/sqlite/wal_index.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace lineweir::platform {
namespace {

// The shared memory's layout is a part of SQLite's file format: two copies of a header, then how
// many frames of the log are in the file already. Numbers are the machine's own.
struct IndexHeader {
  std::uint32_t version;
  std::uint32_t unused;
  // Counted up with each transaction. Whoever has seen the same header before keeps what he knows.
  std::uint32_t changes;
  std::uint8_t made;
  std::uint8_t checksum_order;
  std::uint16_t page_size;
  // The log's last frame, and the file's length in pages; zero where the file itself tells it.
  std::uint32_t last_frame;
  std::uint32_t pages;
  std::array<std::uint32_t, 2> frame_checksum;
  std::array<std::uint32_t, 2> salt;
  std::array<std::uint32_t, 2> checksum;
};

struct Index {
  std::array<IndexHeader, 2> headers;
  std::uint32_t frames_in_file;
};

static_assert(sizeof(IndexHeader) == 48 && sizeof(Index) == 100);

constexpr int index_size = 32768;
// The right to write, and behind it that to bring the log into the file.
constexpr int first_lock = 0;
constexpr int locks = 2;

sqlite3_file* file_of(sqlite3* connection, int which) {
  sqlite3_file* file = nullptr;
  const int result = sqlite3_file_control(connection, "main", which, &file);
  return result == SQLITE_OK && file != nullptr && file->pMethods != nullptr ? file : nullptr;
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

std::array<std::uint32_t, 2> checksum_of(const IndexHeader& header) {
  std::array<std::uint32_t, (sizeof(IndexHeader) - sizeof header.checksum) / 4> words{};
  std::memcpy(words.data(), &header, sizeof words);
  std::array<std::uint32_t, 2> sum{};
  for (std::size_t word = 0; word < words.size(); word += 2) {
    sum[0] += words[word] + sum[1];
    sum[1] += words[word + 1] + sum[0];
  }
  return sum;
}

// Two bytes, the high one first; 1 stands for 65536 there and in the index. Zero where the file is
// none.
std::uint16_t page_size_of(const FileHeader& header) {
  const auto size = static_cast<std::uint16_t>(header[16] * 256 + header[17]);
  return size == 1 || (size >= 512 && std::has_single_bit(size)) ? size : 0;
}

// A header that nobody has seen before, of an empty log. Where none was made yet, whoever reads
// next makes it.
IndexHeader renewed(const IndexHeader& present, const FileHeader& file) {
  if (present.made == 0) return {};
  IndexHeader header = present;
  ++header.changes;
  if (const std::uint16_t size = page_size_of(file)) header.page_size = size;
  header.last_frame = 0;
  header.pages = 0;
  header.checksum = checksum_of(header);
  return header;
}

void renew_header(sqlite3_file* database, const FileHeader& file) {
  void volatile* memory = nullptr;
  const int result = database->pMethods->xShmMap(database, 0, index_size, 0, &memory);
  if (result != SQLITE_OK || memory == nullptr) return;
  // Read and written by the engines of all programs, each copy in turn.
  auto* index = static_cast<Index*>(const_cast<void*>(memory));
  const IndexHeader header = renewed(index->headers[0], file);
  index->headers[1] = header;
  database->pMethods->xShmBarrier(database);
  index->headers[0] = header;
  index->frames_in_file = 0;
  database->pMethods->xShmBarrier(database);
}

void count_up(FileHeader& header, std::size_t place) {
  for (std::size_t digit = place + change_count_size; digit-- > place;) {
    if (++header[digit] != 0) return;
  }
}

void mark_as_logged(sqlite3_file* database, FileHeader& header) {
  for (const std::size_t place : versions_at) {
    if (header[place] != without_log) return;
  }
  for (const std::size_t place : versions_at) header[place] = with_log;
  for (const std::size_t place : change_counts_at) count_up(header, place);
  database->pMethods->xWrite(database, header.data(), static_cast<int>(header.size()), 0);
}

void look_anew(sqlite3_file* database) {
  FileHeader header{};
  const int size = static_cast<int>(header.size());
  // A file that is shorter has no pages.
  if (database->pMethods->xRead(database, header.data(), size, 0) == SQLITE_OK) {
    mark_as_logged(database, header);
  }
  renew_header(database, header);
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
  if (log->pMethods->xFileSize(log, &size) == SQLITE_OK && size == 0) look_anew(database);
  lock(SQLITE_SHM_UNLOCK);
  return true;
}

}  // namespace lineweir::platform
