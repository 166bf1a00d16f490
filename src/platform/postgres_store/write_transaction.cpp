#include "platform/postgres_store/write_transaction.h"

#include <set>
#include <utility>

#include "platform/postgres_store/record_statements.h"
#include "platform/postgres_store/shared_news.h"

namespace lineweir::platform {
namespace {

using Done = std::function<void(std::optional<PostgresFailure> failure)>;

struct Appender {
  PostgresStatements& statements;

  void operator()(const Account& account) const { append_account(statements, account); }
  void operator()(const AccountRemoval& removal) const { append_removal(statements, removal); }
  void operator()(const AccountPassword& password) const {
    statements.push_back(password_write(password));
  }
  void operator()(const AccountLock& lock) const { statements.push_back(lock_write(lock)); }
  void operator()(const AccountRights& rights) const { statements.push_back(rights_write(rights)); }
  void operator()(const AccountSeen& seen) const { statements.push_back(seen_write(seen)); }
  void operator()(const AccountProfile& profile) const {
    statements.push_back(profile_write(profile));
  }
  void operator()(const CallRecord& call) const { append_call(statements, call); }
  void operator()(const GroupMemory& group) const { statements.push_back(group_write(group)); }
  void operator()(const FlaggedCaller& caller) const {
    statements.push_back(flagged_caller_write(caller));
  }
  void operator()(const StudioPlace& place) const {
    statements.push_back(studio_place_write(place));
  }
  // Events need their places first.
  void operator()(const AuditEvent&) const {}
};

void append_all_but_events(PostgresStatements& statements,
                           const std::vector<StoreChange>& changes) {
  for (const StoreChange& change : changes) {
    std::visit(Appender{statements}, change);
    append_news(statements, change);
  }
}

PostgresStatements beginning(const StoreSession& session) { return {{"BEGIN"}, session.guard()}; }

// The rows behind the beginning and the lock.
constexpr std::size_t end_row = 3;
constexpr std::size_t number_row = 4;
constexpr std::size_t first_known_row = 5;

// One writer at a time reads the end of the audit and goes on behind it, of all that there are.
PostgresStatements look_at_audit(const StoreSession& session,
                                 const std::vector<AuditEvent>& events) {
  PostgresStatements statements = beginning(session);
  statements.push_back({"LOCK TABLE audit_end IN SHARE ROW EXCLUSIVE MODE"});
  statements.push_back(audit_end_read());
  statements.push_back(
      {"SELECT max(number) FROM audit WHERE number <= " + std::to_string(most_entries)});
  for (const AuditEvent& event : events) {
    statements.push_back({"SELECT id FROM audit WHERE id = $1", {PostgresValue::text(event.id)}});
  }
  return statements;
}

void append_events(PostgresStatements& statements, const std::vector<AuditEvent>& events,
                   const std::vector<PostgresRows>& seen) {
  AuditEnd end = end_to_go_on(audit_end_of(seen[end_row]), seen[number_row].number(0, 0));
  std::set<std::string> written;
  for (std::size_t i = 0; i < events.size(); ++i) {
    const bool is_known = seen[first_known_row + i].count() > 0;
    if (is_known || !written.insert(events[i].id).second) continue;
    const AuditEntry entry = next_entry(end, events[i]);
    statements.push_back(entry_write(entry));
    end = {.entries = entry.number, .hash = entry.hash};
  }
  if (!written.empty()) statements.push_back(audit_end_write(end));
}

void commit(PostgresConnection& connection, PostgresStatements statements, const Done& done) {
  statements.push_back({"COMMIT"});
  connection.ask(statements, [done](const PostgresAnswer& answer) { done(answer.failure); });
}

}  // namespace

void write_in_one(StoreSession& session, std::vector<StoreChange> changes, Done done) {
  std::vector<AuditEvent> events;
  for (const StoreChange& change : changes) {
    if (const auto* event = std::get_if<AuditEvent>(&change)) events.push_back(*event);
  }
  PostgresConnection& connection = session.connection();
  if (events.empty()) {
    PostgresStatements statements = beginning(session);
    append_all_but_events(statements, changes);
    return commit(connection, std::move(statements), done);
  }
  const PostgresStatements look = look_at_audit(session, events);
  connection.ask(look, [&connection, changes = std::move(changes), events = std::move(events),
                        done = std::move(done)](const PostgresAnswer& answer) {
    if (answer.failure) return done(answer.failure);
    PostgresStatements statements;
    append_all_but_events(statements, changes);
    append_events(statements, events, answer.rows);
    commit(connection, std::move(statements), done);
  });
}

}  // namespace lineweir::platform
