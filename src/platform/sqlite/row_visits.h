#pragma once

#include <sqlite3.h>

#include <exception>
#include <string>

#include "platform/database.h"

namespace lineweir::platform {

// Lets a visitor see the rows of a query from within SQLite, which hands over each value without a
// copy; a scan of a whole table is twice as fast so.
//
// The query calls the SQL function `lineweir_visit` with the row's number and the wanted values as
// a condition on each row.
class RowVisits {
 public:
  explicit RowVisits(sqlite3* connection);
  RowVisits(const RowVisits&) = delete;
  RowVisits& operator=(const RowVisits&) = delete;

  // Runs the query with its first parameter bound to a number, and its second to a text, where
  // they are given. Returns how many rows were visited, at most `limit`. What the visitor throws
  // ends the query and is thrown on.
  struct Query {
    std::string sql;
    std::optional<std::int64_t> number;
    std::optional<std::string> text;
    int limit = 0;
  };
  int run(const Query& query, const RowVisitor& visit);

 private:
  static void visit_row(sqlite3_context* context, int count, sqlite3_value** values);

  sqlite3* connection_;
  const RowVisitor* visit_ = nullptr;
  int limit_ = 0;
  int visited_ = 0;
  std::exception_ptr thrown_;
  std::vector<std::string_view> values_;
};

}  // namespace lineweir::platform
