#include "platform/sqlite_store/store_copy.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <string>
#include <system_error>
#include <thread>

#include "base/failure.h"
#include "platform/disk/file_descriptor.h"
#include "platform/sqlite/connection.h"
#include "platform/sqlite/file_check.h"
#include "platform/sqlite/sqlite_failure.h"
#include "platform/sqlite/statement.h"
#include "platform/sqlite_store/store_rows.h"
#include "platform/sqlite_store/store_schema.h"
#include "platform/sqlite_store/sync_folder.h"

namespace lineweir::platform {
namespace {

constexpr std::chrono::milliseconds busy_pause{10};
constexpr int busy_tries = 500;
constexpr int all_pages = -1;

Connection open_with(const std::filesystem::path& file, int flags) {
  sqlite3* opened = nullptr;
  const int result = sqlite3_open_v2(file.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  Connection connection(opened);
  if (result != SQLITE_OK) throw sqlite_failure(result, file, sqlite3_errstr(result));
  return connection;
}

void copy_pages(sqlite3* from, sqlite3* to) {
  sqlite3_backup* copy = sqlite3_backup_init(to, "main", from, "main");
  if (copy == nullptr) throw sqlite_failure(sqlite3_errcode(to), to);
  int result = SQLITE_OK;
  for (int tries = 0; tries < busy_tries; ++tries) {
    result = sqlite3_backup_step(copy, all_pages);
    if (result != SQLITE_BUSY && result != SQLITE_LOCKED) break;
    std::this_thread::sleep_for(busy_pause);
  }
  const int finished = sqlite3_backup_finish(copy);
  if (result != SQLITE_DONE) throw sqlite_failure(result, to);
  if (finished != SQLITE_OK) throw sqlite_failure(finished, to);
}

Failure cannot_be_made(const std::filesystem::path& file, int reason) {
  if (reason == EEXIST) {
    return {failure_number::database_exists,
            "The file " + shown_name(file) + " is there already; it was not touched."};
  }
  return {failure_number::file_access, "The file " + shown_name(file) + " can't be made: " +
                                           std::system_category().message(reason) + "."};
}

// A file under another name than that which it shall have; gone with this object.
class FileInTheMaking {
 public:
  explicit FileInTheMaking(const std::filesystem::path& file) : file_(file), beside_(file) {
    beside_ += "." + std::to_string(::getpid()) + ".new";
    constexpr mode_t owner_only = 0600;
    const FileDescriptor made(
        ::open(beside_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, owner_only));
    if (!made.is_open()) throw cannot_be_made(file, errno);
  }
  ~FileInTheMaking() {
    std::error_code ignored;
    std::filesystem::remove(beside_, ignored);
  }
  FileInTheMaking(const FileInTheMaking&) = delete;
  FileInTheMaking& operator=(const FileInTheMaking&) = delete;

  const std::filesystem::path& beside() const { return beside_; }

  void take_name() {
    if (::link(beside_.c_str(), file_.c_str()) != 0) throw cannot_be_made(file_, errno);
    sync_folder_of(file_);
  }

 private:
  const std::filesystem::path& file_;
  std::filesystem::path beside_;
};

// One that opens, is whole, and has the store's tables.
Connection open_copy(const std::filesystem::path& file) {
  check_database_file(file);
  Connection copy = open_with(file, SQLITE_OPEN_READONLY);
  require_store(copy.get());
  if (is_empty_database(copy.get())) {
    throw Failure(failure_number::not_a_database,
                  "The file " + shown_name(file) + " holds nothing.");
  }
  Statement check(copy.get(), "PRAGMA quick_check(1)");
  if (!check.step() || check.text(0) != "ok") {
    throw sqlite_failure(SQLITE_CORRUPT, file, {});
  }
  return copy;
}

}  // namespace

void copy_to_new_file(sqlite3* connection, const std::filesystem::path& file) {
  std::error_code ignored;
  if (std::filesystem::exists(std::filesystem::symlink_status(file, ignored))) {
    throw cannot_be_made(file, EEXIST);
  }
  FileInTheMaking made(file);
  {
    const Connection copy = open_with(made.beside(), SQLITE_OPEN_READWRITE);
    copy_pages(connection, copy.get());
    // One file with nothing beside it, which can be read where nothing can be written.
    execute(copy.get(), "PRAGMA journal_mode = DELETE");
  }
  made.take_name();
}

void take_over_copy(sqlite3* connection, const std::filesystem::path& file) {
  const Connection copy = open_copy(file);
  if (!is_fresh_store(connection)) {
    throw Failure(failure_number::database_exists,
                  "The store isn't empty: a backup is restored only into one without calls and "
                  "without users but the first, who has never logged in.");
  }
  copy_pages(copy.get(), connection);
  prepare_for_writing(connection);
  bring_up_to_date(connection);
}

}  // namespace lineweir::platform
