#include "platform/sqlite/sqlite_databases.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "elements/failure.h"
#include "platform/disk/file_descriptor.h"
#include "platform/disk/path_lookup.h"
#include "platform/sqlite/file_check.h"
#include "platform/sqlite/sqlite_database.h"
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

SqliteDatabases::SqliteDatabases(const std::filesystem::path& working_directory,
                                 const Letters& letters)
    : working_directory_(std::filesystem::absolute(working_directory)), letters_(letters) {}

std::filesystem::path SqliteDatabases::locate(const std::string& path) const {
  return place_on_disk(working_directory_, path, letters_);
}

std::unique_ptr<Database> SqliteDatabases::open(const std::string& path) {
  const auto file = locate(path);
  check_database_file(file);
  return std::make_unique<SqliteDatabase>(file, false);
}

std::unique_ptr<Database> SqliteDatabases::create(const std::string& path) {
  const auto file = locate(path);
  make_file(file);
  return std::make_unique<SqliteDatabase>(file, true);
}

}  // namespace lineweir::platform
