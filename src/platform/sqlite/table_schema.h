#pragma once

#include <sqlite3.h>

#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"

namespace lineweir::platform {

// What SQLite knows of a table, and the SQL that is made of it.
struct TableSchema {
  // In the spelling of the file.
  std::string name;
  std::vector<DatabaseColumn> columns;
  // The name by which the row's number is reached: one that no column has.
  std::string row_id;

  // The quoted names of the columns at these positions, each with ", " in front. A position that
  // the table doesn't have is a Failure of number 3265.
  std::string listed(const std::vector<int>& positions) const;

  const DatabaseColumn& column(int position) const;
};

// Changes with each change of any table's definition, by whatever program.
std::int64_t schema_version(sqlite3* connection);

// The name of the index by which numbers are found in a column of the table, and whether the table
// has it.
std::string number_index(const TableSchema& schema, int position);
bool has_index(sqlite3* connection, const std::string& name);

// A Failure of number 3078 where there is no such table.
TableSchema read_schema(sqlite3* connection, const std::string& table);

// An identifier as SQL takes it, whatever its characters.
std::string sql_name(std::string_view name);

// "CREATE TABLE ...": a column of size 30 is a VARCHAR(30).
std::string table_definition(const std::string& name, const std::vector<DatabaseColumn>& columns);

// The digits of the column's value, as an expression that an index can stand on in any program.
std::string digits_expression(const DatabaseColumn& column);

}  // namespace lineweir::platform
