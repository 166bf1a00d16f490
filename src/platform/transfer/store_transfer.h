#pragma once

#include "platform/transfer/whole_store.h"

namespace lineweir::platform {

struct TransferCounts {
  std::int64_t accounts = 0;
  std::int64_t groups = 0;
  std::int64_t flagged_callers = 0;
  std::int64_t calls = 0;
  // Of the audit, which is copied as it is.
  AuditVerdict audit = {};
};

// Copies all that a store holds into an empty one, reads both again and compares each record, and
// only then ends the new one. A Failure where they aren't the same.
TransferCounts transfer_store(WholeStore& from, StoreInTheMaking& to);

}  // namespace lineweir::platform
