#include "platform/postgres_store/column_values.h"
#include "platform/postgres_store/record_statements.h"

namespace lineweir::platform {

PostgresStatement audit_read(const AuditFilter& filter) {
  return {
      "SELECT number, id, at, who, action, detail, hash FROM audit "
      "WHERE number > $1 ORDER BY number LIMIT $2",
      {PostgresValue::number(filter.after), limit_of(filter.limit)}};
}

std::vector<AuditEntry> entries_of(const PostgresRows& rows) {
  std::vector<AuditEntry> entries;
  for (int row = 0; row < rows.count(); ++row) {
    entries.push_back({.number = rows.number(row, 0),
                       .event = {.id = rows.text(row, 1),
                                 .at = moment_of(rows, row, 2),
                                 .user = rows.text(row, 3),
                                 .action = rows.text(row, 4),
                                 .detail = rows.text(row, 5)},
                       .hash = rows.text(row, 6)});
  }
  return entries;
}

PostgresStatement audit_end_read() { return {"SELECT entries, hash FROM audit_end"}; }

AuditEnd audit_end_of(const PostgresRows& rows) {
  if (rows.count() == 0) return {};
  return {.entries = rows.number(0, 0), .hash = rows.text(0, 1)};
}

PostgresStatement entry_write(const AuditEntry& entry) {
  return {
      "INSERT INTO audit (number, id, at, who, action, detail, hash) "
      "VALUES ($1, $2, $3, $4, $5, $6, $7)",
      {PostgresValue::number(entry.number), PostgresValue::text(entry.event.id),
       PostgresValue::number(entry.event.at.count()), PostgresValue::text(entry.event.user),
       PostgresValue::text(entry.event.action), PostgresValue::text(entry.event.detail),
       PostgresValue::text(entry.hash)}};
}

PostgresStatement audit_end_write(const AuditEnd& end) {
  return {
      "INSERT INTO audit_end (one, entries, hash) VALUES (1, $1, $2) ON CONFLICT (one) "
      "DO UPDATE SET entries = excluded.entries, hash = excluded.hash",
      {PostgresValue::number(end.entries), PostgresValue::text(end.hash)}};
}

}  // namespace lineweir::platform
