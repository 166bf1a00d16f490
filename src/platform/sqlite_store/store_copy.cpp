#include "platform/sqlite_store/store_copy.h"

#include <chrono>
#include <string>
#include <thread>

#include "base/failure.h"
#include "platform/sqlite/connection.h"
#include "platform/sqlite/file_check.h"
#include "platform/sqlite/sqlite_failure.h"
#include "platform/sqlite/statement.h"
#include "platform/sqlite_store/file_in_the_making.h"
#include "platform/sqlite_store/store_rows.h"
#include "platform/sqlite_store/store_schema.h"

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

// The same database once more, which is gone with its connection.
Connection copy_beside(sqlite3* connection) {
  // SQLite's name for a file of its own in the folder for such.
  Connection copy = open_with("", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  copy_pages(connection, copy.get());
  return copy;
}

void renew_tables(sqlite3* copy, const std::filesystem::path& file) {
  try {
    bring_up_to_date(copy);
  } catch (const Failure& failure) {
    throw Failure(failure.number(),
                  "The tables of the file " + shown_name(file) +
                      " can't be made those of the present version: " + failure.what());
  }
}

Connection open_sound(const std::filesystem::path& file) {
  check_database_file(file);
  Connection copy = open_with(file, SQLITE_OPEN_READONLY);
  require_store(copy.get());
  if (is_empty_database(copy.get())) {
    throw Failure(failure_number::not_a_database,
                  "The file " + shown_name(file) + " holds nothing.");
  }
  Statement check(copy.get(), "PRAGMA integrity_check(1)");
  if (!check.step() || check.text(0) != "ok") {
    throw sqlite_failure(SQLITE_CORRUPT, file, {});
  }
  return copy;
}

}  // namespace

Connection open_copy(const std::filesystem::path& file) {
  Connection copy = open_sound(file);
  if (!is_up_to_date(copy.get())) {
    copy = copy_beside(copy.get());
    renew_tables(copy.get(), file);
  }
  // Whoever had the file may have changed its version alone.
  const std::string missing = missing_column(copy.get());
  const std::string meddling = meddling_part(copy.get());
  if (missing.empty() && meddling.empty()) return copy;
  throw Failure(failure_number::not_a_database,
                "The file " + shown_name(file) +
                    (missing.empty() ? " is more than a store: it has the " + meddling + "."
                                     : " is no whole store: it lacks " + missing + "."));
}

namespace {

// What reads well where nothing can be written may be refused where it can, such as a table with a
// rule that names no column.
Connection open_writable_copy(const std::filesystem::path& file) {
  const Connection read = open_copy(file);
  Connection copy = copy_beside(read.get());
  try {
    Statement(copy.get(), "SELECT count(*) FROM sqlite_schema").step();
  } catch (const Failure&) {
    throw sqlite_failure(SQLITE_CORRUPT, file, {});
  }
  return copy;
}

}  // namespace

void copy_to_new_file(sqlite3* connection, const std::filesystem::path& file) {
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
  const Connection copy = open_writable_copy(file);
  if (!is_fresh_store(connection)) {
    throw Failure(failure_number::database_exists,
                  "The store isn't empty: a backup is restored only into one without calls, "
                  "without flagged callers, and without users but the first, who has never "
                  "logged in.");
  }
  copy_pages(copy.get(), connection);
  prepare_for_writing(connection);
}

}  // namespace lineweir::platform
