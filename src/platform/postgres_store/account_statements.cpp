#include <algorithm>

#include "platform/postgres_store/column_values.h"
#include "platform/postgres_store/record_statements.h"

namespace lineweir::platform {

void append_accounts_read(PostgresStatements& statements) {
  statements.push_back({"SELECT name, password_hash, profile, locked, last_seen FROM accounts"});
  statements.push_back({"SELECT account, group_number, rights FROM rights"});
}

void append_account_read(PostgresStatements& statements, const std::string& name) {
  statements.push_back(
      {"SELECT name, password_hash, profile, locked, last_seen FROM accounts WHERE name = $1",
       {PostgresValue::text(name)}});
  statements.push_back({"SELECT account, group_number, rights FROM rights WHERE account = $1",
                        {PostgresValue::text(name)}});
}

std::vector<Account> accounts_of(const PostgresRows& accounts, const PostgresRows& rights) {
  std::vector<Account> found;
  for (int row = 0; row < accounts.count(); ++row) {
    found.push_back({.name = accounts.text(row, 0),
                     .password_hash = accounts.text(row, 1),
                     .rights = {},
                     .profile = accounts.bytes(row, 2),
                     .locked = accounts.truth(row, 3),
                     .last_seen = moment_of(accounts, row, 4)});
  }
  std::ranges::sort(found, {}, &Account::name);
  for (int row = 0; row < rights.count(); ++row) {
    const std::string name = rights.text(row, 0);
    const auto account = std::ranges::lower_bound(found, name, {}, &Account::name);
    if (account == found.end() || account->name != name) continue;
    account->rights.emplace(number_of(rights, row, 1), rights.bytes(row, 2));
  }
  return found;
}

void append_account(PostgresStatements& statements, const Account& account) {
  const auto name = PostgresValue::text(account.name);
  statements.push_back(
      {"INSERT INTO accounts (name, password_hash, profile, locked, last_seen) "
       "VALUES ($1, $2, $3, $4, $5) ON CONFLICT (name) DO UPDATE SET "
       "password_hash = excluded.password_hash, profile = excluded.profile, "
       "locked = excluded.locked, last_seen = excluded.last_seen",
       {name, PostgresValue::text(account.password_hash), PostgresValue::bytes(account.profile),
        PostgresValue::truth(account.locked), moment_value(account.last_seen)}});
  statements.push_back({"DELETE FROM rights WHERE account = $1", {name}});
  for (const auto& [group, rights] : account.rights) {
    statements.push_back({"INSERT INTO rights (account, group_number, rights) VALUES ($1, $2, $3)",
                          {name, PostgresValue::number(group), PostgresValue::bytes(rights)}});
  }
}

PostgresStatement password_write(const AccountPassword& password) {
  return {"UPDATE accounts SET password_hash = $2 WHERE name = $1",
          {PostgresValue::text(password.name), PostgresValue::text(password.password_hash)}};
}

PostgresStatement lock_write(const AccountLock& lock) {
  return {"UPDATE accounts SET locked = $2 WHERE name = $1",
          {PostgresValue::text(lock.name), PostgresValue::truth(lock.locked)}};
}

PostgresStatement rights_write(const AccountRights& rights) {
  const auto name = PostgresValue::text(rights.name);
  const auto group = PostgresValue::number(rights.group);
  if (rights.rights.empty()) {
    return {"DELETE FROM rights WHERE account = $1 AND group_number = $2", {name, group}};
  }
  return {
      "INSERT INTO rights (account, group_number, rights) "
      "SELECT name, $2, $3 FROM accounts WHERE name = $1 "
      "ON CONFLICT (account, group_number) DO UPDATE SET rights = excluded.rights",
      {name, group, PostgresValue::bytes(rights.rights)}};
}

PostgresStatement seen_write(const AccountSeen& seen) {
  return {"UPDATE accounts SET last_seen = $2 WHERE name = $1",
          {PostgresValue::text(seen.name), moment_value(seen.at)}};
}

PostgresStatement profile_write(const AccountProfile& profile) {
  return {"UPDATE accounts SET profile = $2 WHERE name = $1",
          {PostgresValue::text(profile.name), PostgresValue::bytes(profile.profile)}};
}

void append_removal(PostgresStatements& statements, const AccountRemoval& removal) {
  statements.push_back(
      {"DELETE FROM accounts WHERE name = $1", {PostgresValue::text(removal.name)}});
}

}  // namespace lineweir::platform
