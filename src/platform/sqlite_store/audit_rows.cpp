#include "platform/sqlite_store/audit_rows.h"

#include "platform/audit/audit_check.h"
#include "platform/sqlite/connection.h"
#include "platform/sqlite_store/row_values.h"

namespace lineweir::platform {
namespace {

const std::string entry_columns = "number, id, at, user, action, detail, hash";

AuditEntry entry_of(const Statement& row) {
  return {.number = row.number(0),
          .event = {.id = text_of(row, 1),
                    .at = moment_of(row, 2),
                    .user = text_of(row, 3),
                    .action = text_of(row, 4),
                    .detail = text_of(row, 5)},
          .hash = text_of(row, 6)};
}

}  // namespace

AuditEnd read_audit_end(sqlite3* connection) {
  Statement row(connection, "SELECT entries, hash FROM audit_end");
  if (!row.step()) return {};
  return {.entries = row.number(0), .hash = text_of(row, 1)};
}

std::vector<AuditEntry> read_audit(sqlite3* connection, const AuditFilter& filter) {
  Statement rows(connection, "SELECT " + entry_columns +
                                 " FROM audit WHERE number > ? ORDER BY number LIMIT ?");
  rows.bind(1, filter.after).bind(2, limit_value(filter.limit));
  std::vector<AuditEntry> entries;
  while (rows.step()) entries.push_back(entry_of(rows));
  return entries;
}

AuditVerdict check_audit(sqlite3* connection) {
  // Entries and end are seen as they are at one moment.
  Transaction look(connection);
  AuditCheck check;
  Statement rows(connection, "SELECT " + entry_columns + " FROM audit ORDER BY number");
  while (rows.step()) check.next(entry_of(rows));
  const AuditEnd end = read_audit_end(connection);
  rows.reset();
  look.commit();
  return check.verdict(end);
}

void append_event(sqlite3* connection, const AuditEvent& event) {
  Statement known(connection, "SELECT 1 FROM audit WHERE id = ?");
  if (known.bind(1, event.id).step()) return;
  Statement last(connection, "SELECT max(number) FROM audit WHERE number <= ?");
  last.bind(1, most_entries).step();
  const AuditEnd written = end_to_go_on(read_audit_end(connection), last.number(0));
  last.reset();
  const AuditEntry entry = next_entry(written, event);

  write_entry(connection, entry);
  write_audit_end(connection, {.entries = entry.number, .hash = entry.hash});
}

void write_entry(sqlite3* connection, const AuditEntry& entry) {
  const AuditEvent& event = entry.event;
  Statement row(connection,
                "INSERT INTO audit (" + entry_columns + ") VALUES (?, ?, ?, ?, ?, ?, ?)");
  row.bind(1, entry.number).bind(2, event.id).bind(4, event.user).bind(5, event.action);
  row.bind(3, static_cast<std::int64_t>(event.at.count())).bind(6, event.detail);
  row.bind(7, entry.hash).run();
}

void write_audit_end(sqlite3* connection, const AuditEnd& end) {
  Statement row(connection, "REPLACE INTO audit_end (one, entries, hash) VALUES (1, ?, ?)");
  row.bind(1, end.entries).bind(2, end.hash).run();
}

}  // namespace lineweir::platform
