#include "platform/sqlite/sqlite_engine.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "base/failure.h"
#include "platform/disk/file_descriptor.h"
#include "platform/disk/path_lookup.h"
#include "platform/sqlite/file_check.h"
#include "platform/sqlite/sqlite_failure.h"

namespace lineweir::platform {
namespace {

// Makes an empty file, which SQLite takes for a database without tables.
void make_file(const std::filesystem::path& file) {
  const FileDescriptor made(::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
  if (made.is_open()) return;
  const std::string name = "The file " + shown_name(file);
  switch (const int reason = errno) {
    case EEXIST:
      throw Failure(failure_number::database_exists, name + " exists already.");
    case ENOSPC:
    case EDQUOT:
      throw sqlite_failure(SQLITE_FULL, file, {});
    default:
      throw Failure(failure_number::database_read_only,
                    name + " could not be made: " + std::strerror(reason) + ".");
  }
}

}  // namespace

SqliteEngine::SqliteEngine(const std::filesystem::path& working_directory, const Letters& letters,
                           std::chrono::milliseconds lock_wait, GuardedFiles* guard,
                           BatchWork batch_work)
    : working_directory_(std::filesystem::absolute(working_directory)),
      letters_(letters),
      lock_wait_(lock_wait),
      guard_(guard == nullptr ? own_guard_ : *guard),
      batch_work_(batch_work) {}

std::filesystem::path SqliteEngine::locate(const std::string& path) const {
  return place_on_disk(working_directory_, path, letters_);
}

std::unique_ptr<Database> SqliteEngine::open(const std::string& path) {
  const auto file = locate(path);
  check_database_file(file);
  return std::make_unique<SqliteDatabase>(file, false, lock_wait_, guard_, batch_work_);
}

std::unique_ptr<Database> SqliteEngine::create(const std::string& path) {
  const auto file = locate(path);
  if (auto unfinished = left_unfinished(file)) return unfinished;
  make_file(file);
  return std::make_unique<SqliteDatabase>(file, true, lock_wait_, guard_, batch_work_);
}

std::unique_ptr<Database> SqliteEngine::left_unfinished(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return nullptr;
  try {
    auto found = std::make_unique<SqliteDatabase>(file, false, lock_wait_, guard_, batch_work_);
    return found->has_tables() ? nullptr : std::move(found);
  } catch (const Failure&) {
    // It is something else, or can't be told; it exists.
    return nullptr;
  }
}

bool SqliteEngine::is_database(const std::string& path) {
  const auto file = locate(path);
  // What the engine keeps beside an open database is no file to open as one.
  if (guard_.guarded(file)) return true;
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return false;
  if (std::filesystem::file_size(file, error) == 0 || error) return false;
  try {
    open_connection(file, lock_wait_);
    return true;
  } catch (const Failure& failure) {
    constexpr std::array databases_all_the_same = {
        failure_number::database_read_only, failure_number::database_in_use,
        failure_number::database_damaged, failure_number::older_database_kind};
    return std::ranges::find(databases_all_the_same, failure.number()) !=
           databases_all_the_same.end();
  }
}

}  // namespace lineweir::platform
