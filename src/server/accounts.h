#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store_records.h"
#include "server/store_outbox.h"

namespace lineweir::server {

// The users, all held here, each change written to the store. Names are UTF-8.
class Accounts {
 public:
  explicit Accounts(StoreOutbox& outbox) : outbox_(outbox) {}

  void take_over(std::vector<platform::Account> accounts);

  bool empty() const { return accounts_.empty(); }
  // In the order of their names.
  const std::map<std::string, platform::Account, std::less<>>& all() const { return accounts_; }
  // Null where there is none.
  const platform::Account* find(std::string_view name) const;

  // Replaces the account of the same name.
  void save(platform::Account account);
  void remove(const std::string& name);

  // no_rights where the user has none in the group, and where there is no such user.
  std::string rights(std::string_view name, int group) const;
  bool has_rights(std::string_view name, int group) const;

 private:
  StoreOutbox& outbox_;
  std::map<std::string, platform::Account, std::less<>> accounts_;
};

}  // namespace lineweir::server
