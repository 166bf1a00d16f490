#include "platform/postgres_store/whole_database.h"

#include "base/failure.h"
#include "platform/postgres_store/shared_news.h"

namespace lineweir::platform {
namespace {

std::vector<Account> read_accounts(BlockingSession& session) {
  PostgresStatements read;
  append_accounts_read(read);
  const auto rows = session.ask(read);
  return accounts_of(rows[0], rows[1]);
}

std::vector<GroupMemory> read_groups(BlockingSession& session) {
  return groups_of(session.ask({groups_read()})[0]);
}

std::vector<FlaggedCaller> read_flagged_callers(BlockingSession& session) {
  return flagged_callers_of(session.ask({flagged_callers_read()})[0]);
}

std::vector<CallRecord> read_calls(BlockingSession& session, std::int64_t id, std::size_t limit) {
  PostgresStatements read;
  append_calls_read(read, calls_behind(id, limit));
  const auto rows = session.ask(read);
  return calls_of(rows[0], rows[1]);
}

std::vector<AuditEntry> read_entries(BlockingSession& session, std::int64_t number,
                                     std::size_t limit) {
  return entries_of(session.ask({audit_read({.after = number, .limit = limit})})[0]);
}

AuditEnd read_end(BlockingSession& session) {
  return audit_end_of(session.ask({audit_end_read()})[0]);
}

const std::string is_empty =
    "SELECT NOT EXISTS (SELECT FROM accounts) AND NOT EXISTS (SELECT FROM calls) "
    "AND NOT EXISTS (SELECT FROM group_memory) AND NOT EXISTS (SELECT FROM flagged_callers) "
    "AND NOT EXISTS (SELECT FROM audit)";

const std::string is_fresh =
    "SELECT NOT EXISTS (SELECT FROM calls) AND NOT EXISTS (SELECT FROM flagged_callers) "
    "AND (SELECT count(*) FROM accounts) <= 1 "
    "AND NOT EXISTS (SELECT FROM accounts WHERE last_seen IS NOT NULL OR length(profile) > 0)";

void require(BlockingSession& session, FilledDatabase::Before before, const std::string& shown) {
  const bool may_be_used = before == FilledDatabase::Before::Fresh;
  if (session.ask({{may_be_used ? is_fresh : is_empty}})[0].truth(0, 0)) return;
  throw Failure(failure_number::database_exists,
                may_be_used
                    ? "The store isn't empty: a backup is restored only into one without calls, "
                      "without flagged callers, and without users but the first, who has never "
                      "logged in."
                    : "There is something in " + shown + " already; it was not touched.");
}

}  // namespace

WholeDatabase::WholeDatabase(const PostgresAddress& address, const std::atomic<bool>& given_up)
    : session_(address, MissingStore::Refuse, given_up) {
  session_.ask({{"SET idle_in_transaction_session_timeout TO 0"}, {"SET statement_timeout TO 0"}});
  session_.ask({{"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"}});
}

std::vector<Account> WholeDatabase::accounts() { return read_accounts(session_); }

std::vector<GroupMemory> WholeDatabase::groups() { return read_groups(session_); }

std::vector<FlaggedCaller> WholeDatabase::flagged_callers() {
  return read_flagged_callers(session_);
}

std::vector<CallRecord> WholeDatabase::calls_behind(std::int64_t id, std::size_t limit) {
  return read_calls(session_, id, limit);
}

std::vector<AuditEntry> WholeDatabase::entries_behind(std::int64_t number, std::size_t limit) {
  return read_entries(session_, number, limit);
}

AuditEnd WholeDatabase::audit_end() { return read_end(session_); }

FilledDatabase::FilledDatabase(const PostgresAddress& address, Before before,
                               const std::atomic<bool>& given_up)
    : session_(address, MissingStore::Make, given_up) {
  session_.ask(
      {{"BEGIN"},
       session_.guard(),
       {"LOCK TABLE accounts, rights, calls, call_steps, group_memory, flagged_callers, audit, "
        "audit_end IN EXCLUSIVE MODE"}});
  require(session_, before, address.shown());
  session_.ask({{"DELETE FROM accounts"},
                {"DELETE FROM group_memory"},
                {"DELETE FROM flagged_callers"},
                {"DELETE FROM audit"},
                {"DELETE FROM audit_end"}});
}

std::vector<Account> FilledDatabase::accounts() { return read_accounts(session_); }

std::vector<GroupMemory> FilledDatabase::groups() { return read_groups(session_); }

std::vector<FlaggedCaller> FilledDatabase::flagged_callers() {
  return read_flagged_callers(session_);
}

std::vector<CallRecord> FilledDatabase::calls_behind(std::int64_t id, std::size_t limit) {
  return read_calls(session_, id, limit);
}

std::vector<AuditEntry> FilledDatabase::entries_behind(std::int64_t number, std::size_t limit) {
  return read_entries(session_, number, limit);
}

AuditEnd FilledDatabase::audit_end() { return read_end(session_); }

void FilledDatabase::add(const StorePortion& portion) {
  PostgresStatements statements;
  for (const Account& account : portion.accounts) append_account(statements, account);
  for (const GroupMemory& group : portion.groups) statements.push_back(group_write(group));
  for (const FlaggedCaller& caller : portion.flagged_callers) {
    statements.push_back(flagged_caller_write(caller));
  }
  for (const CallRecord& call : portion.calls) append_call(statements, call);
  for (const AuditEntry& entry : portion.entries) statements.push_back(entry_write(entry));
  if (!statements.empty()) session_.ask(statements);
}

void FilledDatabase::end_audit(const AuditEnd& end) { session_.ask({audit_end_write(end)}); }

void FilledDatabase::commit() { session_.ask({all_is_news(), {"COMMIT"}}); }

}  // namespace lineweir::platform
