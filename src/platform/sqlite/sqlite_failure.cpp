#include "platform/sqlite/sqlite_failure.h"

#include <cerrno>

namespace lineweir::platform {

std::string shown_name(const std::filesystem::path& file) {
  return "'" + file.filename().string() + "'";
}

std::string shown_name(sqlite3* connection) {
  const char* file = sqlite3_db_filename(connection, "main");
  return shown_name(std::filesystem::path(file == nullptr ? "" : file));
}

Failure sqlite_failure(int result_code, const std::filesystem::path& file,
                       const std::string& detail) {
  const std::string name = shown_name(file);
  switch (result_code & 0xFF) {
    case SQLITE_NOTADB:
      return {failure_number::not_a_database, "The file " + name + " is not a database."};
    case SQLITE_READONLY:
    case SQLITE_PERM:
    case SQLITE_CANTOPEN:
      return {failure_number::database_read_only,
              "The file " + name + " can't be written to: it or its folder is read-only."};
    case SQLITE_FULL:
      return {failure_number::disk_full, "There is no room left on the disk for " + name + "."};
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return {failure_number::database_in_use,
              "The file " + name + " is in use by another program."};
    case SQLITE_CORRUPT:
      return {failure_number::database_damaged, "The database " + name + " is damaged."};
    default:
      return {failure_number::database_io,
              "The database " + name + " could not be used: " + detail + "."};
  }
}

Failure sqlite_failure(int result_code, sqlite3* connection) {
  // A full disk may show as any failure to write.
  const int reason = sqlite3_system_errno(connection);
  const bool failed_to_write = (result_code & 0xFF) == SQLITE_IOERR;
  if (failed_to_write && (reason == ENOSPC || reason == EDQUOT)) result_code = SQLITE_FULL;
  const char* file = sqlite3_db_filename(connection, "main");
  return sqlite_failure(result_code, file == nullptr ? "" : file, sqlite3_errmsg(connection));
}

}  // namespace lineweir::platform
