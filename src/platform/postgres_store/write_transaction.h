#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/postgres_store/store_session.h"
#include "platform/store_records.h"

namespace lineweir::platform {

// Writes all changes, in order, or nothing, and tells from the loop why not. Where the connection
// was lost they may have been written; they may be written again. What was begun may not have
// ended, see PostgresConnection::is_in_transaction().
void write_in_one(StoreSession& session, std::vector<StoreChange> changes,
                  std::function<void(std::optional<PostgresFailure> failure)> done);

}  // namespace lineweir::platform
