#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/audit/audit_check.h"
#include "platform/postgres/postgres_rows.h"
#include "platform/postgres/postgres_statement.h"
#include "platform/store.h"

// The store's records as statements, and as what these give.
namespace lineweir::platform {

using PostgresStatements = std::vector<PostgresStatement>;

// All accounts: two statements, whose rows are read together.
void append_accounts_read(PostgresStatements& statements);
std::vector<Account> accounts_of(const PostgresRows& accounts, const PostgresRows& rights);
void append_account(PostgresStatements& statements, const Account& account);
void append_removal(PostgresStatements& statements, const AccountRemoval& removal);

// Which calls, and in which order.
struct CallChoice {
  // Behind "FROM calls": conditions, an order and a limit.
  std::string which;
  std::vector<PostgresValue> values;
};
CallChoice open_calls();
CallChoice ended_calls(const CallFilter& filter);
// By their numbers, behind that one.
CallChoice calls_behind(std::int64_t id, std::size_t limit);
// Calls and their steps: two statements.
void append_calls_read(PostgresStatements& statements, const CallChoice& choice);
std::vector<CallRecord> calls_of(const PostgresRows& calls, const PostgresRows& steps);
void append_call(PostgresStatements& statements, const CallRecord& call);

PostgresStatement groups_read();
std::vector<GroupMemory> groups_of(const PostgresRows& rows);
PostgresStatement group_write(const GroupMemory& group);

PostgresStatement audit_read(const AuditFilter& filter);
std::vector<AuditEntry> entries_of(const PostgresRows& rows);
PostgresStatement audit_end_read();
AuditEnd audit_end_of(const PostgresRows& rows);
PostgresStatement entry_write(const AuditEntry& entry);
PostgresStatement audit_end_write(const AuditEnd& end);

}  // namespace lineweir::platform
