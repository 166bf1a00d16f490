#include "platform/sqlite/sqlite_database.h"

#include <sys/stat.h>

#include <algorithm>

#include "base/failure.h"
#include "base/names.h"
#include "platform/sqlite/file_check.h"
#include "platform/sqlite/sqlite_recordset.h"
#include "platform/sqlite/sqlite_row_batch.h"
#include "platform/sqlite/statement.h"
#include "platform/sqlite/table_schema.h"
#include "platform/sqlite/wal_index.h"

namespace lineweir::platform {
namespace {

void require_usable_names(const std::vector<DatabaseColumn>& columns) {
  for (auto column = columns.begin(); column != columns.end(); ++column) {
    const bool taken = std::any_of(columns.begin(), column, [&](const DatabaseColumn& other) {
      return same_name(other.name, column->name);
    });
    if (taken || column->name.empty()) {
      throw Failure(
          failure_number::field_name_taken,
          "A table can't have " + (taken ? "two columns of the name \"" + column->name + "\"."
                                         : std::string("a column without a name.")));
    }
  }
}

// While it lives a transaction is not brought to the disk when it has ended, but with a later one
// or the next checkpoint.
class LightSync {
 public:
  explicit LightSync(sqlite3* connection) : connection_(connection) {
    execute(connection_, "PRAGMA synchronous = NORMAL");
  }
  ~LightSync() {
    sqlite3_exec(connection_, "PRAGMA synchronous = FULL", nullptr, nullptr, nullptr);
  }
  LightSync(const LightSync&) = delete;
  LightSync& operator=(const LightSync&) = delete;

 private:
  sqlite3* connection_;
};

}  // namespace

NewFile::~NewFile() {
  if (file_.empty()) return;
  std::error_code ignored;
  for (const char* beside : {"", "-journal", "-wal", "-shm"}) {
    std::filesystem::remove(file_.string() + beside, ignored);
  }
}

SqliteDatabase::SqliteDatabase(const std::filesystem::path& file, bool just_made,
                               const LockWait& lock_wait, GuardedFiles& guard, BatchWork batch_work)
    : guard_(guard),
      file_(file),
      batch_work_(batch_work),
      new_file_(just_made ? file : std::filesystem::path()),
      open_(file, lock_wait, guard),
      visits_(open_.get()) {
  remember_look();
  followed_ = known_;
}

void SqliteDatabase::require_writable() {
  if (writable_) return;
  prepare_for_writing(open_.get());
  open_.note_beside();
  writable_ = true;
}

void SqliteDatabase::create_table(const std::string& name,
                                  const std::vector<DatabaseColumn>& columns) {
  require_usable_names(columns);
  require_writable();
  execute(open_.get(), table_definition(name, columns));
  new_file_.keep();
}

bool SqliteDatabase::has_tables() const {
  return query_number(open_.get(), "SELECT count(*) FROM sqlite_master") > 0;
}

std::vector<DatabaseColumn> SqliteDatabase::table_columns(const std::string& table) {
  return read_schema(open_.get(), table).columns;
}

void SqliteDatabase::rename_column(const std::string& table, int position,
                                   const std::string& name) {
  require_writable();
  // A name that is lost with the power is no loss, and whoever gives it doesn't wait for the disk.
  const LightSync light(open_.get());
  Transaction transaction(open_.get());
  const TableSchema schema = read_schema(open_.get(), table);
  const std::string old_name = schema.column(position).name;
  auto columns = schema.columns;
  columns[static_cast<std::size_t>(position)].name = name;
  require_usable_names(columns);
  if (name != old_name) {
    execute(open_.get(), "ALTER TABLE " + sql_name(schema.name) + " RENAME COLUMN " +
                             sql_name(old_name) + " TO " + sql_name(name));
  }
  transaction.commit();
}

void SqliteDatabase::index_numbers(const std::string& table, int position) {
  const TableSchema schema = read_schema(open_.get(), table);
  const DatabaseColumn& column = schema.column(position);
  const std::string index = number_index(schema, position);
  if (has_index(open_.get(), index)) return;
  require_writable();
  // Of a time when only some of the signs between digits were passed over.
  execute(open_.get(),
          "DROP INDEX IF EXISTS " + sql_name(schema.name + " numbers " + std::to_string(position)));
  execute(open_.get(), "CREATE INDEX IF NOT EXISTS " + sql_name(index) + " ON " +
                           sql_name(schema.name) + " (" + digits_expression(column) + ")");
}

std::unique_ptr<Recordset> SqliteDatabase::open_recordset(const std::string& table) {
  auto recordset = std::make_unique<SqliteRecordset>(open_.get(), visits_, table);
  require_rights(file_);
  return recordset;
}

bool SqliteDatabase::follow_file() {
  const auto present = look();
  if (!present || present->identity != identity() || *present == followed_) return true;
  if (!renew_wal_index(open_.get())) return false;
  followed_ = *present;
  return true;
}

std::int64_t SqliteDatabase::change_stamp() {
  // Not counted by SQLite if it was by other means.
  follow_file();
  // The first counts what others have changed, the second what went through this connection.
  return (query_number(open_.get(), "PRAGMA data_version") << 32) ^
         sqlite3_total_changes(open_.get());
}

void SqliteDatabase::in_transaction(const std::function<void()>& body) {
  require_writable();
  Transaction transaction(open_.get());
  body();
  transaction.commit();
  remember_look();
}

bool SqliteDatabase::checkpoint() {
  Statement checkpoint(open_.get(), "PRAGMA wal_checkpoint(TRUNCATE)");
  const bool whole = checkpoint.step() && checkpoint.number(0) == 0;
  remember_look();
  return whole;
}

// By the name alone: closing another handle of a file would end the locks that this process has on
// it.
std::optional<SqliteDatabase::FileLook> SqliteDatabase::look() const {
  struct stat status {};
  if (::stat(file_.c_str(), &status) != 0) return std::nullopt;
  constexpr std::int64_t nanoseconds = 1000000000;
  return FileLook{{status.st_dev, status.st_ino},
                  status.st_size,
                  status.st_mtim.tv_sec * nanoseconds + status.st_mtim.tv_nsec};
}

void SqliteDatabase::remember_look() {
  const auto present = look();
  if (present && present->identity == identity()) known_ = *present;
  open_.note_beside();
}

FileStanding SqliteDatabase::standing() {
  const auto present = look();
  if (!present) return FileStanding::Gone;
  if (present->identity != identity()) return FileStanding::Replaced;
  open_.note_beside();
  return *present == known_ ? FileStanding::Same : FileStanding::Written;
}

std::unique_ptr<RowBatch> SqliteDatabase::collect_rows(const std::string& table) {
  open_.require_in_place();
  const BatchTarget target{file_, table, guard_};
  if (batch_work_ == BatchWork::AtOnce) return std::make_unique<ImmediateRowBatch>(target);
  return std::make_unique<ThreadedRowBatch>(target);
}

}  // namespace lineweir::platform
