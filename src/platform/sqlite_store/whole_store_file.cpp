#include "platform/sqlite_store/whole_store_file.h"

#include <chrono>

#include "platform/sqlite/statement.h"
#include "platform/sqlite_store/account_rows.h"
#include "platform/sqlite_store/audit_rows.h"
#include "platform/sqlite_store/call_rows.h"
#include "platform/sqlite_store/caller_rows.h"
#include "platform/sqlite_store/store_copy.h"
#include "platform/sqlite_store/store_rows.h"
#include "platform/sqlite_store/store_schema.h"

namespace lineweir::platform {
namespace {

// Nobody else knows the new file.
constexpr LockWait no_wait{0};

}  // namespace

WholeStoreFile::WholeStoreFile(const std::filesystem::path& file) : connection_(open_copy(file)) {
  execute(connection_.get(), "BEGIN");
}

std::vector<Account> WholeStoreFile::accounts() { return read_accounts(connection_.get()); }

std::vector<GroupMemory> WholeStoreFile::groups() { return read_groups(connection_.get()); }

std::vector<FlaggedCaller> WholeStoreFile::flagged_callers() {
  return read_flagged_callers(connection_.get());
}

std::vector<CallRecord> WholeStoreFile::calls_behind(std::int64_t id, std::size_t limit) {
  return read_calls_behind(connection_.get(), id, limit);
}

std::vector<AuditEntry> WholeStoreFile::entries_behind(std::int64_t number, std::size_t limit) {
  return read_audit(connection_.get(), {.after = number, .limit = limit});
}

AuditEnd WholeStoreFile::audit_end() { return read_audit_end(connection_.get()); }

NewStoreFile::NewStoreFile(const std::filesystem::path& file)
    : file_(file), connection_(open_connection(file_.beside(), no_wait)) {
  // One file with nothing beside it.
  execute(connection_.get(), "PRAGMA journal_mode = DELETE");
  execute(connection_.get(), "PRAGMA synchronous = FULL");
  bring_up_to_date(connection_.get());
  execute(connection_.get(), "BEGIN IMMEDIATE");
}

std::vector<Account> NewStoreFile::accounts() { return read_accounts(connection_.get()); }

std::vector<GroupMemory> NewStoreFile::groups() { return read_groups(connection_.get()); }

std::vector<FlaggedCaller> NewStoreFile::flagged_callers() {
  return read_flagged_callers(connection_.get());
}

std::vector<CallRecord> NewStoreFile::calls_behind(std::int64_t id, std::size_t limit) {
  return read_calls_behind(connection_.get(), id, limit);
}

std::vector<AuditEntry> NewStoreFile::entries_behind(std::int64_t number, std::size_t limit) {
  return read_audit(connection_.get(), {.after = number, .limit = limit});
}

AuditEnd NewStoreFile::audit_end() { return read_audit_end(connection_.get()); }

void NewStoreFile::add(const StorePortion& portion) {
  sqlite3* const connection = connection_.get();
  for (const Account& account : portion.accounts) write_account(connection, account);
  for (const GroupMemory& group : portion.groups) write_change(connection, group);
  for (const FlaggedCaller& caller : portion.flagged_callers) write_change(connection, caller);
  for (const CallRecord& call : portion.calls) write_call(connection, call);
  for (const AuditEntry& entry : portion.entries) write_entry(connection, entry);
}

void NewStoreFile::end_audit(const AuditEnd& end) { write_audit_end(connection_.get(), end); }

void NewStoreFile::commit() {
  execute(connection_.get(), "COMMIT");
  connection_.reset();
  file_.take_name();
}

}  // namespace lineweir::platform
