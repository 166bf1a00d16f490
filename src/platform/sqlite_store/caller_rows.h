#pragma once

#include <vector>

#include "platform/sqlite/statement.h"
#include "platform/store.h"

namespace lineweir::platform {

// In the order of their keys.
std::vector<FlaggedCaller> read_flagged_callers(sqlite3* connection);
void write_flagged_caller(sqlite3* connection, const FlaggedCaller& caller);

CallerHistory read_caller_history(sqlite3* connection, const std::string& key);

// How many there were; in one transaction.
std::size_t forget_calls(sqlite3* connection, Moment before, Store::Forgetting what,
                         std::size_t limit);

}  // namespace lineweir::platform
