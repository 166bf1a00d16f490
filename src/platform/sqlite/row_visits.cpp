#include "platform/sqlite/row_visits.h"

#include <utility>

#include "platform/sqlite/sqlite_failure.h"
#include "platform/sqlite/statement.h"

namespace lineweir::platform {
namespace {

constexpr int any_number_of_arguments = -1;

std::string_view text_of(sqlite3_value* value) {
  const void* bytes = sqlite3_value_blob(value);
  if (bytes == nullptr) return {};
  return {static_cast<const char*>(bytes), static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

}  // namespace

RowVisits::RowVisits(sqlite3* connection) : connection_(connection) {
  const int result = sqlite3_create_function_v2(
      connection, "lineweir_visit", any_number_of_arguments, SQLITE_UTF8 | SQLITE_DIRECTONLY, this,
      &RowVisits::visit_row, nullptr, nullptr, nullptr);
  if (result != SQLITE_OK) throw sqlite_failure(result, connection);
}

int RowVisits::run(const Query& query, const RowVisitor& visit) {
  if (query.limit <= 0) return 0;
  Statement statement(connection_, query.sql);
  if (query.number) statement.bind(1, *query.number);
  if (query.text) statement.bind(2, *query.text);
  visit_ = &visit;
  limit_ = query.limit;
  visited_ = 0;
  thrown_ = nullptr;
  try {
    // The condition holds for the last row that is wanted and for none before it.
    statement.step();
  } catch (const Failure&) {
    if (!thrown_) throw;
  }
  if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
  return visited_;
}

void RowVisits::visit_row(sqlite3_context* context, int count, sqlite3_value** values) {
  auto& self = *static_cast<RowVisits*>(sqlite3_user_data(context));
  // No exception may pass through SQLite.
  try {
    self.values_.clear();
    for (int i = 1; i < count; ++i) self.values_.push_back(text_of(values[i]));
    (*self.visit_)(sqlite3_value_int64(values[0]), self.values_);
    ++self.visited_;
    sqlite3_result_int(context, self.visited_ == self.limit_ ? 1 : 0);
  } catch (...) {
    self.thrown_ = std::current_exception();
    sqlite3_result_error(context, "ended by its visitor", -1);
  }
}

}  // namespace lineweir::platform
