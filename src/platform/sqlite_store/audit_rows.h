#pragma once

#include <sqlite3.h>

#include <vector>

#include "platform/store.h"

namespace lineweir::platform {

std::vector<AuditEntry> read_audit(sqlite3* connection, const AuditFilter& filter);
AuditVerdict check_audit(sqlite3* connection);
// An event whose id is there already isn't appended again.
void append_event(sqlite3* connection, const AuditEvent& event);

}  // namespace lineweir::platform
