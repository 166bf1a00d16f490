#pragma once

#include <algorithm>
#include <limits>

#include "platform/postgres/postgres_rows.h"
#include "platform/postgres/postgres_statement.h"
#include "platform/wall_clock.h"

// Values of the store's records as columns have them.
namespace lineweir::platform {

// A moment of 0 is NULL.
inline PostgresValue moment_value(Moment moment) {
  return moment == Moment{0} ? PostgresValue::no_number() : PostgresValue::number(moment.count());
}
inline Moment moment_of(const PostgresRows& rows, int row, int column) {
  return Moment{rows.number(row, column)};
}

// Whatever somebody has written into the database, it is held between these.
inline int number_of(const PostgresRows& rows, int row, int column) {
  constexpr std::int64_t least = std::numeric_limits<int>::min() + 1;
  constexpr std::int64_t most = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(rows.number(row, column), least, most));
}

inline PostgresValue limit_of(std::size_t limit) {
  constexpr auto most = static_cast<std::size_t>(std::numeric_limits<std::int64_t>::max());
  return PostgresValue::number(static_cast<std::int64_t>(std::min(limit, most)));
}

}  // namespace lineweir::platform
