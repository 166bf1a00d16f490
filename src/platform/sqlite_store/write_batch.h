#pragma once

#include <sqlite3.h>

#include <span>
#include <string>
#include <vector>

#include "platform/store_records.h"

namespace lineweir::platform {

struct BatchOutcome {
  // Of each write, in their order.
  std::vector<bool> written;
  // Why those that weren't written weren't; of the last one.
  std::string trouble;
};

// Several writes on the disk with one wait for it; each whole or not at all. Where the disk refuses
// them a Failure is thrown, and nothing of any was written.
BatchOutcome write_batch(sqlite3* connection,
                         std::span<const std::vector<StoreChange>* const> writes);

}  // namespace lineweir::platform
