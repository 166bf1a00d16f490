#include "platform/sqlite/sqlite_database.h"

#include <algorithm>

#include "elements/failure.h"
#include "elements/names.h"
#include "platform/sqlite/sqlite_recordset.h"
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

}  // namespace

NewFile::~NewFile() {
  if (file_.empty()) return;
  std::error_code ignored;
  for (const char* beside : {"", "-journal", "-wal", "-shm"}) {
    std::filesystem::remove(file_.string() + beside, ignored);
  }
}

SqliteDatabase::SqliteDatabase(const std::filesystem::path& file, bool just_made)
    : new_file_(just_made ? file : std::filesystem::path()),
      connection_(open_connection(file)),
      visits_(connection_.get()) {}

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
  const std::string index = schema.name + " numbers " + std::to_string(position);
  Statement found(connection_.get(),
                  "SELECT 1 FROM sqlite_schema WHERE type = 'index' AND name = ?1 COLLATE NOCASE");
  if (found.bind(1, index).step()) return;
  found.reset();
  require_writable();
  execute(connection_.get(), "CREATE INDEX IF NOT EXISTS " + sql_name(index) + " ON " +
                                 sql_name(schema.name) + " (" + bare_number_expression(column) +
                                 ")");
}

std::unique_ptr<Recordset> SqliteDatabase::open_recordset(const std::string& table) {
  auto recordset = std::make_unique<SqliteRecordset>(connection_.get(), visits_, table);
  require_writable();
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
}

}  // namespace lineweir::platform
