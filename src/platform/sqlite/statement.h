#pragma once

#include <sqlite3.h>

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace lineweir::platform {

// A prepared statement. Parameters count from 1 and columns from 0, as SQLite counts them. It must
// not outlive its connection.
class Statement {
 public:
  Statement(sqlite3* connection, const std::string& sql);
  ~Statement() { sqlite3_finalize(statement_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  // The text must last until the statement has been reset or destroyed.
  Statement& bind(int parameter, std::string_view text);
  Statement& bind(int parameter, std::int64_t number);
  // Bytes that are no text in UTF-8; the same holds.
  Statement& bind_bytes(int parameter, std::string_view bytes);
  // A text that ends with the call is never bound.
  template <std::same_as<std::string> Text>
  Statement& bind(int parameter, Text&& text) = delete;
  template <std::same_as<std::string> Text>
  Statement& bind_bytes(int parameter, Text&& bytes) = delete;
  Statement& bind_nothing(int parameter);

  // Whether there is a row.
  bool step();

  // Ready for the next run, with the same parameters.
  void reset() { sqlite3_reset(statement_); }

  // Runs the statement to its end and makes it ready for the next run, also after a failure.
  void run();

  // Of the present row; the text lasts until the next step.
  std::string_view text(int column) const;
  std::int64_t number(int column) const { return sqlite3_column_int64(statement_, column); }
  bool is_nothing(int column) const {
    return sqlite3_column_type(statement_, column) == SQLITE_NULL;
  }

 private:
  sqlite3* connection_;
  sqlite3_stmt* statement_ = nullptr;
};

// Runs one or several statements that give no rows.
void execute(sqlite3* connection, const std::string& sql);

// The first column of the first row; 0 where there is none.
std::int64_t query_number(sqlite3* connection, const std::string& sql);

}  // namespace lineweir::platform
