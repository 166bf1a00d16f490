#include "platform/sqlite_store/account_rows.h"

#include <algorithm>

#include "platform/sqlite_store/row_values.h"

namespace lineweir::platform {
namespace {

void remove_rights(sqlite3* connection, const std::string& account) {
  Statement(connection, "DELETE FROM rights WHERE account = ?").bind(1, account).run();
}

void read_rights(sqlite3* connection, std::vector<Account>& accounts) {
  Statement statement(connection, "SELECT account, group_number, rights FROM rights");
  while (statement.step()) {
    const auto found = std::ranges::lower_bound(accounts, statement.text(0), {}, &Account::name);
    if (found == accounts.end() || found->name != statement.text(0)) continue;
    found->rights.emplace(number_of(statement, 1), text_of(statement, 2));
  }
}

}  // namespace

std::vector<Account> read_accounts(sqlite3* connection) {
  std::vector<Account> accounts;
  Statement statement(connection,
                      "SELECT name, password_hash, profile, locked, last_seen FROM accounts");
  while (statement.step()) {
    accounts.push_back({.name = text_of(statement, 0),
                        .password_hash = text_of(statement, 1),
                        .rights = {},
                        .profile = text_of(statement, 2),
                        .locked = statement.number(3) != 0,
                        .last_seen = moment_of(statement, 4)});
  }
  std::ranges::sort(accounts, {}, &Account::name);
  read_rights(connection, accounts);
  return accounts;
}

void write_account(sqlite3* connection, const Account& account) {
  Statement row(connection,
                "INSERT INTO accounts (name, password_hash, profile, locked, last_seen) "
                "VALUES (?, ?, ?, ?, ?) ON CONFLICT (name) DO UPDATE SET "
                "password_hash = excluded.password_hash, profile = excluded.profile, "
                "locked = excluded.locked, last_seen = excluded.last_seen");
  row.bind(1, account.name).bind(2, account.password_hash).bind_bytes(3, account.profile);
  row.bind(4, account.locked ? 1 : 0);
  bind_moment(row, 5, account.last_seen);
  row.run();

  remove_rights(connection, account.name);
  Statement right(connection,
                  "INSERT INTO rights (account, group_number, rights) VALUES (?, ?, ?)");
  for (const auto& [group, rights] : account.rights) {
    right.bind(1, account.name).bind(2, group).bind_bytes(3, rights).run();
  }
}

void write_password(sqlite3* connection, const AccountPassword& password) {
  Statement(connection, "UPDATE accounts SET password_hash = ? WHERE name = ?")
      .bind(1, password.password_hash)
      .bind(2, password.name)
      .run();
}

void write_lock(sqlite3* connection, const AccountLock& lock) {
  Statement(connection, "UPDATE accounts SET locked = ? WHERE name = ?")
      .bind(1, lock.locked ? 1 : 0)
      .bind(2, lock.name)
      .run();
}

void write_rights(sqlite3* connection, const AccountRights& rights) {
  if (rights.rights.empty()) {
    Statement(connection, "DELETE FROM rights WHERE account = ? AND group_number = ?")
        .bind(1, rights.name)
        .bind(2, rights.group)
        .run();
    return;
  }
  Statement(connection,
            "REPLACE INTO rights (account, group_number, rights) "
            "SELECT name, ?2, ?3 FROM accounts WHERE name = ?1")
      .bind(1, rights.name)
      .bind(2, rights.group)
      .bind_bytes(3, rights.rights)
      .run();
}

void write_seen(sqlite3* connection, const AccountSeen& seen) {
  Statement row(connection, "UPDATE accounts SET last_seen = ? WHERE name = ?");
  bind_moment(row, 1, seen.at);
  row.bind(2, seen.name).run();
}

void write_profile(sqlite3* connection, const AccountProfile& profile) {
  Statement(connection, "UPDATE accounts SET profile = ? WHERE name = ?")
      .bind_bytes(1, profile.profile)
      .bind(2, profile.name)
      .run();
}

void remove_account(sqlite3* connection, const AccountRemoval& removal) {
  remove_rights(connection, removal.name);
  Statement(connection, "DELETE FROM accounts WHERE name = ?").bind(1, removal.name).run();
}

}  // namespace lineweir::platform
