#include "server/accounts.h"

#include <algorithm>
#include <set>
#include <utility>

#include "wire/rights_layout.h"

namespace lineweir::server {
namespace {

platform::Account nothing_but_name(const std::string& name) {
  platform::Account account;
  account.name = name;
  return account;
}

}  // namespace

void Accounts::take_over(std::vector<platform::Account> accounts) {
  accounts_.clear();
  for (platform::Account& account : accounts) {
    const std::string name = account.name;
    accounts_[name] = std::move(account);
  }
}

const platform::Account* Accounts::find(std::string_view name) const {
  const auto account = accounts_.find(name);
  return account == accounts_.end() ? nullptr : &account->second;
}

platform::Account* Accounts::at(const std::string& name) {
  const auto account = accounts_.find(name);
  return account == accounts_.end() ? nullptr : &account->second;
}

void Accounts::add(platform::Account account) {
  platform::Account& held = accounts_[account.name];
  if (held == account) return;
  held = std::move(account);
  outbox_.put(held);
}

void Accounts::set_password(const std::string& name, std::string password_hash) {
  platform::Account* const account = at(name);
  if (account == nullptr || account->password_hash == password_hash) return;
  account->password_hash = std::move(password_hash);
  outbox_.put(platform::AccountPassword{name, account->password_hash});
}

void Accounts::set_locked(const std::string& name, bool locked) {
  platform::Account* const account = at(name);
  if (account == nullptr || account->locked == locked) return;
  account->locked = locked;
  outbox_.put(platform::AccountLock{name, locked});
}

void Accounts::set_rights(const std::string& name, int group, std::string rights) {
  platform::Account* const account = at(name);
  if (account == nullptr) return;
  const auto known = account->rights.find(group);
  const bool is_same = known == account->rights.end() ? rights.empty() : known->second == rights;
  if (is_same) return;
  outbox_.put(platform::AccountRights{name, group, rights});
  if (rights.empty()) {
    account->rights.erase(known);
  } else {
    account->rights[group] = std::move(rights);
  }
}

void Accounts::note_seen(const std::string& name, platform::Moment now) {
  platform::Account* const account = at(name);
  if (account == nullptr || account->last_seen == now) return;
  account->last_seen = now;
  outbox_.put(platform::AccountSeen{name, now});
}

void Accounts::save_profile(const std::string& name, std::string profile) {
  platform::Account* const account = at(name);
  if (account == nullptr || account->profile == profile) return;
  account->profile = std::move(profile);
  outbox_.put(platform::AccountProfile{name, account->profile});
}

std::vector<std::pair<std::string, Accounts::Change>> Accounts::take(
    const platform::StoreNews& news) {
  std::vector<std::pair<std::string, Change>> changes;
  std::vector<std::string> removed = news.removed_accounts;
  if (news.all) {
    for (const auto& [name, account] : accounts_) {
      if (std::ranges::count(news.accounts, name, &platform::Account::name) == 0) {
        removed.push_back(name);
      }
    }
  }
  for (const std::string& name : removed) {
    if (outbox_.holds(nothing_but_name(name)) || accounts_.erase(name) == 0) continue;
    changes.emplace_back(name, Change::Removed);
  }
  for (const platform::Account& account : news.accounts) {
    // As a whole, or to be removed.
    if (outbox_.holds(nothing_but_name(account.name))) continue;
    platform::Account& held = accounts_[account.name];
    platform::Account now = with_what_waits(account, held);
    const bool is_locked_now = now.locked && !held.locked;
    const bool has_other_rights = now.rights != held.rights;
    held = std::move(now);
    if (is_locked_now) {
      changes.emplace_back(account.name, Change::Locked);
    } else if (has_other_rights) {
      changes.emplace_back(account.name, Change::Rights);
    }
  }
  return changes;
}

platform::Account Accounts::with_what_waits(platform::Account account,
                                            const platform::Account& held) const {
  const std::string& name = account.name;
  if (outbox_.holds(platform::AccountPassword{.name = name})) {
    account.password_hash = held.password_hash;
  }
  if (outbox_.holds(platform::AccountLock{.name = name})) account.locked = held.locked;
  if (outbox_.holds(platform::AccountProfile{.name = name})) account.profile = held.profile;
  account.last_seen = std::max(account.last_seen, held.last_seen);
  std::set<int> groups;
  for (const platform::Account* const of : {&std::as_const(account), &held}) {
    for (const auto& [group, granted] : of->rights) groups.insert(group);
  }
  for (const int group : groups) {
    if (!outbox_.holds(platform::AccountRights{.name = name, .group = group})) continue;
    const auto own = held.rights.find(group);
    if (own == held.rights.end()) {
      account.rights.erase(group);
    } else {
      account.rights[group] = own->second;
    }
  }
  return account;
}

void Accounts::remove(const std::string& name) {
  if (accounts_.erase(name) != 0) outbox_.put(platform::AccountRemoval{name});
}

std::string Accounts::rights(std::string_view name, int group) const {
  const platform::Account* account = find(name);
  if (account == nullptr) return std::string(no_rights);
  for (const int place : {group, every_group}) {
    const auto rights = account->rights.find(place);
    if (rights != account->rights.end()) return rights->second;
  }
  return std::string(no_rights);
}

bool Accounts::has_rights(std::string_view name, int group) const {
  return rights(name, group) != no_rights;
}

}  // namespace lineweir::server
