#pragma once

#include <sqlite3.h>

#include <vector>

#include "platform/store.h"

namespace lineweir::platform {

// The store's records as rows of its tables. Everything here throws a Failure.

StoredState read_state(sqlite3* connection);
std::vector<GroupMemory> read_groups(sqlite3* connection);

// Part of a transaction of the caller's.
void write_change(sqlite3* connection, const StoreChange& change);

// Whether there is no record at all.
bool is_empty_store(sqlite3* connection);
// Whether a backup may take the store's place, see Store::restore.
bool is_fresh_store(sqlite3* connection);

}  // namespace lineweir::platform
