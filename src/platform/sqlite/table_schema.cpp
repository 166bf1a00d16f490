#include "platform/sqlite/table_schema.h"

#include <algorithm>
#include <charconv>

#include "base/failure.h"
#include "base/names.h"
#include "base/text.h"
#include "platform/sqlite/sqlite_failure.h"
#include "platform/sqlite/statement.h"

namespace lineweir::platform {
namespace {

// What is looked at of a number in a column of any size.
constexpr int longest_number = 40;

// The size in a declared type such as "VARCHAR(30)"; 0 where it tells none.
int declared_size(std::string_view type) {
  int size = 0;
  const auto open = type.find('(');
  if (open == std::string_view::npos) return 0;
  std::from_chars(type.data() + open + 1, type.data() + type.size(), size);
  return std::max(size, 0);
}

std::string free_row_id_name(const std::vector<DatabaseColumn>& columns) {
  constexpr std::array<std::string_view, 3> names = {"rowid", "_rowid_", "oid"};
  const auto free = std::ranges::find_if(names, [&](std::string_view name) {
    return std::ranges::none_of(
        columns, [&](const DatabaseColumn& column) { return same_name(column.name, name); });
  });
  return std::string(free == names.end() ? names.front() : *free);
}

}  // namespace

const DatabaseColumn& TableSchema::column(int position) const {
  if (position < 0 || static_cast<std::size_t>(position) >= columns.size()) {
    throw Failure(failure_number::no_such_field,
                  "The table has no column " + std::to_string(position) + ".");
  }
  return columns[static_cast<std::size_t>(position)];
}

std::string TableSchema::listed(const std::vector<int>& positions) const {
  std::string list;
  for (const int position : positions) list += ", " + sql_name(column(position).name);
  return list;
}

std::int64_t schema_version(sqlite3* connection) {
  return query_number(connection, "PRAGMA schema_version");
}

std::string number_index(const TableSchema& schema, int position) {
  return schema.name + " digits " + std::to_string(position);
}

bool has_index(sqlite3* connection, const std::string& name) {
  Statement found(connection,
                  "SELECT 1 FROM sqlite_schema WHERE type = 'index' AND name = ?1 COLLATE NOCASE");
  return found.bind(1, name).step();
}

TableSchema read_schema(sqlite3* connection, const std::string& table) {
  TableSchema schema;
  Statement found(connection,
                  "SELECT name FROM sqlite_schema WHERE type = 'table' AND name = ?1 "
                  "COLLATE NOCASE");
  found.bind(1, table);
  if (!found.step()) {
    throw Failure(failure_number::no_such_table,
                  "The file " + shown_name(connection) + " holds no table \"" + table + "\".");
  }
  schema.name = found.text(0);

  Statement columns(connection, "SELECT name, type FROM pragma_table_info(?1) ORDER BY cid");
  columns.bind(1, schema.name);
  while (columns.step()) {
    schema.columns.push_back({std::string(columns.text(0)), declared_size(columns.text(1))});
  }
  schema.row_id = free_row_id_name(schema.columns);
  return schema;
}

std::string sql_name(std::string_view name) {
  std::string text = "\"";
  for (const char c : name) {
    if (c == '"') text += '"';
    if (c != '\0') text += c;
  }
  return text + '"';
}

std::string table_definition(const std::string& name, const std::vector<DatabaseColumn>& columns) {
  std::string sql;
  for (const DatabaseColumn& column : columns) {
    sql += sql.empty() ? "CREATE TABLE " + sql_name(name) + " (" : ", ";
    sql += sql_name(column.name);
    sql += column.size == 0 ? " TEXT" : " VARCHAR(" + std::to_string(column.size) + ")";
  }
  return sql + ")";
}

std::string digits_expression(const DatabaseColumn& column) {
  const std::string name = sql_name(column.name);
  const int length = column.size == 0 ? longest_number : column.size;
  std::string expression = "''";
  for (int place = 1; place <= length; ++place) {
    const std::string character = "substr(" + name + ", " + std::to_string(place) + ", 1)";
    expression +=
        " || CASE WHEN " + character + " BETWEEN '0' AND '9' THEN " + character + " ELSE '' END";
  }
  return expression;
}

}  // namespace lineweir::platform
