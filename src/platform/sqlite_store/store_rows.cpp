#include "platform/sqlite_store/store_rows.h"

#include "platform/sqlite_store/account_rows.h"
#include "platform/sqlite_store/audit_rows.h"
#include "platform/sqlite_store/call_rows.h"
#include "platform/sqlite_store/caller_rows.h"
#include "platform/sqlite_store/row_values.h"

namespace lineweir::platform {
namespace {

void write_group(sqlite3* connection, const GroupMemory& group) {
  Statement row(connection,
                "REPLACE INTO group_memory (group_number, next_call, message, show_last, "
                "show_next, show_text) VALUES (?, ?, ?, ?, ?, ?)");
  row.bind(1, group.group).bind_bytes(3, group.message);
  if (group.next_call < 0) {
    row.bind_nothing(2);
  } else {
    row.bind(2, group.next_call + 1);
  }
  int parameter = 4;
  for (const std::string& text : group.show_times) row.bind(parameter++, text);
  row.run();
}

struct Writer {
  sqlite3* connection;

  void operator()(const Account& account) const { write_account(connection, account); }
  void operator()(const AccountRemoval& removal) const { remove_account(connection, removal); }
  void operator()(const AccountPassword& password) const { write_password(connection, password); }
  void operator()(const AccountLock& lock) const { write_lock(connection, lock); }
  void operator()(const AccountRights& rights) const { write_rights(connection, rights); }
  void operator()(const AccountSeen& seen) const { write_seen(connection, seen); }
  void operator()(const AccountProfile& profile) const { write_profile(connection, profile); }
  void operator()(const CallRecord& call) const { write_call(connection, call); }
  void operator()(const GroupMemory& group) const { write_group(connection, group); }
  void operator()(const FlaggedCaller& caller) const { write_flagged_caller(connection, caller); }
  // A file is one server's, which has no others to tell.
  void operator()(const StudioPlace&) const {}
  void operator()(const AuditEvent& event) const { append_event(connection, event); }
};

}  // namespace

std::vector<GroupMemory> read_groups(sqlite3* connection) {
  std::vector<GroupMemory> groups;
  Statement row(connection,
                "SELECT group_number, coalesce(next_call, 0), message, show_last, show_next, "
                "show_text FROM group_memory ORDER BY group_number");
  while (row.step()) {
    groups.push_back({.group = number_of(row, 0),
                      .next_call = number_of(row, 1) - 1,
                      .message = text_of(row, 2),
                      .show_times = {text_of(row, 3), text_of(row, 4), text_of(row, 5)}});
  }
  return groups;
}

StoredState read_state(sqlite3* connection) {
  return {.accounts = read_accounts(connection),
          .open_calls = read_open_calls(connection),
          .groups = read_groups(connection),
          .flagged_callers = read_flagged_callers(connection),
          .studio_places = {}};
}

void write_change(sqlite3* connection, const StoreChange& change) {
  std::visit(Writer{connection}, change);
}

bool is_empty_store(sqlite3* connection) {
  return query_number(connection,
                      "SELECT (SELECT count(*) FROM accounts) = 0 "
                      "AND (SELECT count(*) FROM calls) = 0 "
                      "AND (SELECT count(*) FROM group_memory) = 0 "
                      "AND (SELECT count(*) FROM flagged_callers) = 0 "
                      "AND (SELECT count(*) FROM audit) = 0") != 0;
}

bool is_fresh_store(sqlite3* connection) {
  return query_number(connection,
                      "SELECT (SELECT count(*) FROM calls) = 0 "
                      "AND (SELECT count(*) FROM flagged_callers) = 0 "
                      "AND (SELECT count(*) FROM accounts) <= 1 "
                      "AND (SELECT count(*) FROM accounts "
                      "WHERE last_seen IS NOT NULL OR length(profile) > 0) = 0") != 0;
}

}  // namespace lineweir::platform
