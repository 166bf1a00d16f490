#pragma once

#include <sqlite3.h>

#include <vector>

#include "platform/audit/audit_check.h"
#include "platform/store.h"

namespace lineweir::platform {

std::vector<AuditEntry> read_audit(sqlite3* connection, const AuditFilter& filter);
AuditVerdict check_audit(sqlite3* connection);
AuditEnd read_audit_end(sqlite3* connection);
// An event whose id is there already isn't appended again.
void append_event(sqlite3* connection, const AuditEvent& event);
// As they stand, in whatever place.
void write_entry(sqlite3* connection, const AuditEntry& entry);
void write_audit_end(sqlite3* connection, const AuditEnd& end);

}  // namespace lineweir::platform
