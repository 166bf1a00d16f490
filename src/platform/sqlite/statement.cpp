#include "platform/sqlite/statement.h"

#include "platform/sqlite/sqlite_failure.h"

namespace lineweir::platform {

Statement::Statement(sqlite3* connection, const std::string& sql) : connection_(connection) {
  const int result = sqlite3_prepare_v2(connection, sql.c_str(), static_cast<int>(sql.size()),
                                        &statement_, nullptr);
  if (result != SQLITE_OK) throw sqlite_failure(result, connection);
}

Statement& Statement::bind(int parameter, std::string_view text) {
  // A text without characters may be a null pointer, which would bind NULL.
  const char* characters = text.empty() ? "" : text.data();
  const int result = sqlite3_bind_text64(statement_, parameter, characters, text.size(),
                                         SQLITE_STATIC, SQLITE_UTF8);
  if (result != SQLITE_OK) throw sqlite_failure(result, connection_);
  return *this;
}

Statement& Statement::bind(int parameter, std::int64_t number) {
  const int result = sqlite3_bind_int64(statement_, parameter, number);
  if (result != SQLITE_OK) throw sqlite_failure(result, connection_);
  return *this;
}

Statement& Statement::bind_bytes(int parameter, std::string_view bytes) {
  const char* first = bytes.empty() ? "" : bytes.data();
  const int result = sqlite3_bind_blob64(statement_, parameter, first, bytes.size(), SQLITE_STATIC);
  if (result != SQLITE_OK) throw sqlite_failure(result, connection_);
  return *this;
}

Statement& Statement::bind_nothing(int parameter) {
  const int result = sqlite3_bind_null(statement_, parameter);
  if (result != SQLITE_OK) throw sqlite_failure(result, connection_);
  return *this;
}

bool Statement::step() {
  const int result = sqlite3_step(statement_);
  if (result == SQLITE_ROW) return true;
  if (result == SQLITE_DONE) return false;
  const Failure failure = sqlite_failure(result, connection_);
  reset();
  throw failure;
}

void Statement::run() {
  while (step()) {
  }
  reset();
}

std::string_view Statement::text(int column) const {
  // Asked for as bytes, so that SQLite hands out its own without a copy.
  const void* bytes = sqlite3_column_blob(statement_, column);
  if (bytes == nullptr) return {};
  return {static_cast<const char*>(bytes),
          static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

void execute(sqlite3* connection, const std::string& sql) {
  const int result = sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr);
  if (result != SQLITE_OK) throw sqlite_failure(result, connection);
}

std::int64_t query_number(sqlite3* connection, const std::string& sql) {
  Statement statement(connection, sql);
  return statement.step() ? statement.number(0) : 0;
}

}  // namespace lineweir::platform
