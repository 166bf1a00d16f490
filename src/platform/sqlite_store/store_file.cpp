#include "platform/sqlite_store/store_file.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "platform/disk/file_descriptor.h"
#include "platform/sqlite/file_check.h"
#include "platform/sqlite/sqlite_failure.h"
#include "platform/sqlite/statement.h"
#include "platform/sqlite_store/store_schema.h"
#include "platform/sqlite_store/sync_folder.h"

namespace lineweir::platform {
namespace {

// Passwords' hashes and callers' data are nobody else's.
constexpr mode_t owner_only = 0600;

// Read by SQLite's own handle: closing another one would end the locks on the file.
bool begins_as_database(sqlite3* connection) {
  constexpr std::string_view header("SQLite format 3\0", 16);
  sqlite3_file* file = nullptr;
  std::array<char, header.size()> bytes{};
  if (sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
      file == nullptr || file->pMethods == nullptr) {
    return false;
  }
  return file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), 0) ==
             SQLITE_OK &&
         std::string_view(bytes.data(), bytes.size()) == header;
}

}  // namespace

StoreFile::StoreFile(std::filesystem::path file, std::chrono::milliseconds lock_wait)
    : file_(std::move(file)), lock_wait_(lock_wait) {}

sqlite3* StoreFile::ready() {
  if (open_ && !open_->in_place()) {
    if (!disk_identity(file_)) open_->require_in_place();
    open_.reset();
  }
  if (!open_) open();
  require_content();
  return open_->get();
}

sqlite3* StoreFile::open_one() {
  if (!open_) open();
  return open_->get();
}

void StoreFile::require_in_place() {
  open_->require_in_place();
  require_content();
}

// What lies in the write-ahead log would go on being read and written for a while.
void StoreFile::require_content() {
  if (!begins_as_database(open_->get())) overwritten_ = true;
  if (!overwritten_) return;
  throw Failure(failure_number::database_not_found,
                "The file " + shown_name(file_) + " was emptied or overwritten.");
}

void StoreFile::open() {
  if (!was_open_) make_where_missing();
  check_database_file(file_);
  open_.emplace(file_, lock_wait_, guard_);
  try {
    sqlite3* connection = open_->get();
    require_store(connection);
    if (was_open_ && is_empty_database(connection)) {
      throw Failure(failure_number::not_a_database,
                    "The file " + shown_name(file_) + " holds nothing any more.");
    }
    prepare_for_writing(connection);
    execute(connection, "PRAGMA foreign_keys = ON");
    bring_up_to_date(connection);
    open_->note_beside();
  } catch (...) {
    open_.reset();
    throw;
  }
  was_open_ = true;
  overwritten_ = false;
}

void StoreFile::make_where_missing() const {
  const FileDescriptor made(
      ::open(file_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, owner_only));
  if (made.is_open()) {
    sync_folder_of(file_);
  } else if (errno != EEXIST) {
    throw Failure(failure_number::file_access,
                  "The file " + shown_name(file_) +
                      " can't be made: " + std::system_category().message(errno) + ".");
  }
}

}  // namespace lineweir::platform
