#include "platform/sqlite_store/write_batch.h"

#include "base/failure.h"
#include "platform/sqlite/connection.h"
#include "platform/sqlite/statement.h"
#include "platform/sqlite_store/store_rows.h"

namespace lineweir::platform {
namespace {

void write_one(sqlite3* connection, const std::vector<StoreChange>& changes) {
  execute(connection, "SAVEPOINT one_write");
  try {
    for (const StoreChange& change : changes) write_change(connection, change);
  } catch (const Failure&) {
    // Some failures, such as a full disk, have ended the whole transaction.
    if (sqlite3_get_autocommit(connection) == 0) {
      execute(connection, "ROLLBACK TO one_write");
      execute(connection, "RELEASE one_write");
    }
    throw;
  }
  execute(connection, "RELEASE one_write");
}

}  // namespace

BatchOutcome write_batch(sqlite3* connection,
                         std::span<const std::vector<StoreChange>* const> writes) {
  BatchOutcome outcome;
  Transaction transaction(connection);
  for (const auto* changes : writes) {
    try {
      write_one(connection, *changes);
      outcome.written.push_back(true);
    } catch (const Failure& failure) {
      if (sqlite3_get_autocommit(connection) != 0) throw;
      outcome.written.push_back(false);
      outcome.trouble = failure.what();
    }
  }
  transaction.commit();
  return outcome;
}

}  // namespace lineweir::platform
