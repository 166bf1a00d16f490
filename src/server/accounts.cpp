#include "server/accounts.h"

#include <algorithm>
#include <utility>

#include "wire/rights_layout.h"

namespace lineweir::server {
namespace {

// Of the rights that hold in every group which isn't named.
constexpr int every_group = 0;

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

void Accounts::save(platform::Account account) {
  platform::Account& held = accounts_[account.name];
  if (held == account) return;
  held = std::move(account);
  outbox_.put(held);
  // One that waits already is written behind the account.
  outbox_.put(platform::AccountProfile{held.name, held.profile});
}

void Accounts::note_seen(const std::string& name, platform::Moment now) {
  const auto account = accounts_.find(name);
  if (account == accounts_.end() || account->second.last_seen == now) return;
  account->second.last_seen = now;
  outbox_.put(platform::AccountSeen{name, now});
}

void Accounts::save_profile(const std::string& name, std::string profile) {
  const auto account = accounts_.find(name);
  if (account == accounts_.end() || account->second.profile == profile) return;
  account->second.profile = std::move(profile);
  outbox_.put(platform::AccountProfile{name, account->second.profile});
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
    if (outbox_.holds_account(name) || accounts_.erase(name) == 0) continue;
    changes.emplace_back(name, Change::Removed);
  }
  for (const platform::Account& account : news.accounts) {
    if (outbox_.holds_account(account.name)) continue;
    platform::Account& held = accounts_[account.name];
    const bool is_locked_now = account.locked && !held.locked;
    const bool has_other_rights = account.rights != held.rights;
    held = account;
    if (is_locked_now) {
      changes.emplace_back(account.name, Change::Locked);
    } else if (has_other_rights) {
      changes.emplace_back(account.name, Change::Rights);
    }
  }
  return changes;
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
