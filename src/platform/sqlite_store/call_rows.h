#pragma once

#include <sqlite3.h>

#include <vector>

#include "platform/store.h"

namespace lineweir::platform {

std::vector<CallRecord> read_open_calls(sqlite3* connection);
std::vector<CallRecord> read_ended_calls(sqlite3* connection, const CallFilter& filter);
// Behind the one of this number, by their numbers, at most so many.
std::vector<CallRecord> read_calls_behind(sqlite3* connection, std::int64_t id, std::size_t limit);
void write_call(sqlite3* connection, const CallRecord& call);

}  // namespace lineweir::platform
