#include "server/accounts.h"

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
