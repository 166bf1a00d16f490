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
// The same of one account.
void append_account_read(PostgresStatements& statements, const std::string& name);
std::vector<Account> accounts_of(const PostgresRows& accounts, const PostgresRows& rights);
void append_account(PostgresStatements& statements, const Account& account);
PostgresStatement password_write(const AccountPassword& password);
PostgresStatement lock_write(const AccountLock& lock);
PostgresStatement rights_write(const AccountRights& rights);
PostgresStatement seen_write(const AccountSeen& seen);
PostgresStatement profile_write(const AccountProfile& profile);
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

// In the order of their keys.
PostgresStatement flagged_callers_read();
PostgresStatement flagged_caller_read(const std::string& key);
std::vector<FlaggedCaller> flagged_callers_of(const PostgresRows& rows);
PostgresStatement flagged_caller_write(const FlaggedCaller& caller);
PostgresStatement caller_history_read(const std::string& key);
CallerHistory caller_history_of(const PostgresRows& rows);
// Gives a row for each call that was forgotten.
PostgresStatement forget_calls(Moment before, Store::Forgetting what, std::size_t limit);

// In the order of the groups.
PostgresStatement studio_places_read();
PostgresStatement studio_place_read(int group);
std::vector<StudioPlace> studio_places_of(const PostgresRows& rows);
PostgresStatement studio_place_write(const StudioPlace& place);

PostgresStatement audit_read(const AuditFilter& filter);
std::vector<AuditEntry> entries_of(const PostgresRows& rows);
PostgresStatement audit_end_read();
AuditEnd audit_end_of(const PostgresRows& rows);
PostgresStatement entry_write(const AuditEntry& entry);
PostgresStatement audit_end_write(const AuditEnd& end);

}  // namespace lineweir::platform
