#include "platform/sqlite/sqlite_database.h"

#include <sys/stat.h>

#include <algorithm>

#include "elements/failure.h"
#include "elements/names.h"
#include "platform/sqlite/file_check.h"
#include "platform/sqlite/sqlite_recordset.h"
#include "platform/sqlite/sqlite_row_batch.h"
#include "platform/sqlite/statement.h"
#include "platform/sqlite/table_schema.h"

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
                               const LockWait& lock_wait, GuardedFiles* guard, BatchWork batch_work)
    : file_(file),
      known_(look().value_or(FileLook())),
      batch_work_(batch_work),
      new_file_(just_made ? file : std::filesystem::path()),
      guarding_(guard, {known_.identity.device, known_.identity.number}),
      connection_(open_connection(file, lock_wait)),
      visits_(connection_.get()) {
  remember_look();
}

SqliteDatabase::Guarding::Guarding(GuardedFiles* guard, GuardedFiles::Identity file)
    : guard_(guard), file_(file) {
  if (guard_ != nullptr) guard_->guard(file_);
}

SqliteDatabase::Guarding::~Guarding() {
  if (guard_ != nullptr) guard_->let_go(file_);
}

void SqliteDatabase::require_writable() {
  if (!writable_) prepare_for_writing(connection_.get());
  writable_ = true;
}

void SqliteDatabase::create_table(const std::string& name,
                                  const std::vector<DatabaseColumn>& columns) {
  require_usable_names(columns);
  require_writable();
  execute(connection_.get(), table_definition(name, columns));
  new_file_.keep();
}

std::vector<DatabaseColumn> SqliteDatabase::table_columns(const std::string& table) {
  return read_schema(connection_.get(), table).columns;
}

void SqliteDatabase::rename_column(const std::string& table, int position,
                                   const std::string& name) {
  require_writable();
  // A name that is lost with the power is no loss, and whoever gives it doesn't wait for the disk.
  const LightSync light(connection_.get());
  Transaction transaction(connection_.get());
  const TableSchema schema = read_schema(connection_.get(), table);
  const std::string old_name = schema.column(position).name;
  auto columns = schema.columns;
  columns[static_cast<std::size_t>(position)].name = name;
  require_usable_names(columns);
  if (name != old_name) {
    execute(connection_.get(), "ALTER TABLE " + sql_name(schema.name) + " RENAME COLUMN " +
                                   sql_name(old_name) + " TO " + sql_name(name));
  }
  transaction.commit();
}

void SqliteDatabase::index_numbers(const std::string& table, int position) {
  const TableSchema schema = read_schema(connection_.get(), table);
  const std::string& column = schema.column(position).name;
  const std::string index = number_index(schema, position);
  if (has_index(connection_.get(), index)) return;
  require_writable();
  execute(connection_.get(), "CREATE INDEX IF NOT EXISTS " + sql_name(index) + " ON " +
                                 sql_name(schema.name) + " (" + bare_number_expression(column) +
                                 ")");
}

std::unique_ptr<Recordset> SqliteDatabase::open_recordset(const std::string& table) {
  auto recordset = std::make_unique<SqliteRecordset>(connection_.get(), visits_, table);
  require_rights(file_);
  return recordset;
}

std::int64_t SqliteDatabase::change_stamp() {
  // The first counts what others have changed, the second what went through this connection.
  return (query_number(connection_.get(), "PRAGMA data_version") << 32) ^
         sqlite3_total_changes(connection_.get());
}

void SqliteDatabase::in_transaction(const std::function<void()>& body) {
  require_writable();
  Transaction transaction(connection_.get());
  body();
  transaction.commit();
  remember_look();
}

bool SqliteDatabase::checkpoint() {
  Statement checkpoint(connection_.get(), "PRAGMA wal_checkpoint(TRUNCATE)");
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
  if (present && present->identity == known_.identity) known_ = *present;
}

FileStanding SqliteDatabase::standing() {
  const auto present = look();
  if (!present) return FileStanding::Gone;
  if (present->identity != known_.identity) return FileStanding::Replaced;
  return *present == known_ ? FileStanding::Same : FileStanding::Written;
}

std::unique_ptr<RowBatch> SqliteDatabase::collect_rows(const std::string& table) {
  if (batch_work_ == BatchWork::AtOnce) return std::make_unique<ImmediateRowBatch>(file_, table);
  return std::make_unique<ThreadedRowBatch>(file_, table);
}

}  // namespace lineweir::platform
