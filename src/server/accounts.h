#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
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
  // The user is there now, and what the user's console keeps; both leave to other servers what
  // they have changed meanwhile.
  void note_seen(const std::string& name, platform::Moment now);
  void save_profile(const std::string& name, std::string profile);
  void remove(const std::string& name);

  // Takes over what another server has changed, but for what waits to be written here: that comes
  // last. Told what has become of users.
  enum class Change { Rights, Locked, Removed };
  std::vector<std::pair<std::string, Change>> take(const platform::StoreNews& news);

  // no_rights where the user has none in the group, and where there is no such user.
  std::string rights(std::string_view name, int group) const;
  bool has_rights(std::string_view name, int group) const;

 private:
  StoreOutbox& outbox_;
  std::map<std::string, platform::Account, std::less<>> accounts_;
};

}  // namespace lineweir::server
