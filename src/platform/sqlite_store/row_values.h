#pragma once

#include <algorithm>
#include <limits>
#include <string>

#include "platform/sqlite/statement.h"
#include "platform/store.h"

// Values of the store's records as columns have them.
namespace lineweir::platform {

// A moment of 0 is NULL.
inline void bind_moment(Statement& statement, int parameter, Moment moment) {
  if (moment == Moment{0}) {
    statement.bind_nothing(parameter);
  } else {
    statement.bind(parameter, static_cast<std::int64_t>(moment.count()));
  }
}
inline Moment moment_of(const Statement& statement, int column) {
  return Moment{statement.number(column)};
}

inline std::string text_of(const Statement& statement, int column) {
  return std::string(statement.text(column));
}

// Whatever somebody has written into the file, it is held between these.
inline int number_of(const Statement& statement, int column) {
  constexpr std::int64_t least = std::numeric_limits<int>::min() + 1;
  constexpr std::int64_t most = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(statement.number(column), least, most));
}

inline std::int64_t limit_value(std::size_t limit) {
  constexpr auto most = static_cast<std::size_t>(std::numeric_limits<std::int64_t>::max());
  return static_cast<std::int64_t>(std::min(limit, most));
}

}  // namespace lineweir::platform
