#include "platform/sqlite/open_file.h"

#include "base/failure.h"
#include "platform/sqlite/sqlite_failure.h"

namespace lineweir::platform {
namespace {

std::filesystem::path without_links(const std::filesystem::path& file) {
  std::error_code error;
  auto name = std::filesystem::weakly_canonical(file, error);
  return error ? file : name;
}

DiskIdentity identity_of(const std::filesystem::path& file) {
  const auto identity = disk_identity(file);
  if (identity) return *identity;
  throw Failure(failure_number::database_not_found, "Couldn't find file " + shown_name(file) + ".");
}

// An empty file is a new database to SQLite, which deletes what is beside it: the write-ahead log
// of connections that had it open before it was emptied.
void require_content(const std::filesystem::path& file, const GuardedFiles& guard) {
  std::error_code error;
  if (std::filesystem::file_size(file, error) > 0 || error || !guard.guarded(file)) return;
  throw sqlite_failure(SQLITE_NOTADB, file, {});
}

}  // namespace

OpenFile::Known::Known(GuardedFiles& guard, const std::filesystem::path& name, DiskIdentity file)
    : guard_(guard), name_(name), file_(file) {
  if (!guard_.beside().set_aside(name)) {
    throw Failure(failure_number::database_read_only,
                  "The file " + shown_name(name) +
                      " can't be used: what is left beside it of the file that had its name before "
                      "can't be moved away.");
  }
  require_content(name, guard_);
  guard_.guard(file_);
  guard_.beside().enter(name_, file_);
}

OpenFile::Known::~Known() {
  guard_.beside().leave(name_, file_);
  guard_.let_go(file_);
}

OpenFile::OpenFile(const std::filesystem::path& file, const LockWait& lock_wait,
                   GuardedFiles& guard)
    : guard_(guard),
      name_(without_links(file)),
      identity_(identity_of(name_)),
      known_(guard, name_, identity_),
      connection_(open_connection(file, lock_wait)) {
  note_beside();
  // Another one that was put there in between is opened at the next try.
  if (!in_place()) throw sqlite_failure(SQLITE_BUSY, file, {});
}

OpenFile::~OpenFile() {
  if (in_place()) return;
  // What is beside it now may be another file's.
  sqlite3_db_config(connection_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  guard_.beside().set_aside(name_);
}

void OpenFile::require_in_place() const {
  if (in_place()) return;
  throw Failure(failure_number::database_not_found,
                "The file " + shown_name(name_) + " has been moved or deleted.");
}

}  // namespace lineweir::platform
