#include "platform/postgres/postgres_rows.h"

#include <libpq-fe.h>

#include "platform/postgres/stored_text.h"

namespace lineweir::platform {

void PostgresRows::Clear::operator()(pg_result* result) const { PQclear(result); }

int PostgresRows::count() const { return PQntuples(result_.get()); }

std::int64_t PostgresRows::number(int row, int column) const {
  std::uint64_t number = 0;
  for (const char byte : bytes(row, column)) {
    number = number << 8U | static_cast<unsigned char>(byte);
  }
  return static_cast<std::int64_t>(number);
}

bool PostgresRows::truth(int row, int column) const { return number(row, column) != 0; }

std::string PostgresRows::text(int row, int column) const {
  return from_stored_text(bytes(row, column));
}

std::string PostgresRows::bytes(int row, int column) const {
  const int size = PQgetlength(result_.get(), row, column);
  return {PQgetvalue(result_.get(), row, column), static_cast<std::size_t>(size)};
}

std::string PostgresRows::done() const { return PQcmdStatus(result_.get()); }

}  // namespace lineweir::platform
