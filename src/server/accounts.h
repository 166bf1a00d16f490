#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/store_records.h"
#include "server/store_outbox.h"

namespace lineweir::server {

// Stands in an account for all groups that it doesn't name.
inline constexpr int every_group = 0;

// The users, all held here, each change written to the store. Names are UTF-8.
class Accounts {
 public:
  using Held = std::map<std::string, platform::Account, std::less<>>;

  explicit Accounts(StoreOutbox& outbox) : outbox_(outbox) {}

  void take_over(std::vector<platform::Account> accounts);

  bool empty() const { return accounts_.empty(); }
  // In the order of their names.
  const Held& all() const { return accounts_; }
  // Null where there is none.
  const platform::Account* find(std::string_view name) const;

  // In the place of an account of the same name.
  void add(platform::Account account);
  // Each of these changes no more than what it names, and leaves to other servers what they change
  // of the account at the same time. Nothing happens where there is none.
  void set_password(const std::string& name, std::string password_hash);
  void set_locked(const std::string& name, bool locked);
  // Empty where the group is no longer named.
  void set_rights(const std::string& name, int group, std::string rights);
  // The user is there now, and what the user's console keeps.
  void note_seen(const std::string& name, platform::Moment now);
  void save_profile(const std::string& name, std::string profile);
  void remove(const std::string& name);

  // Takes over what another server has changed, but for what waits to be written here: that comes
  // last, and is news itself then. Told what has become of users.
  enum class Change { Rights, Locked, Removed };
  std::vector<std::pair<std::string, Change>> take(const platform::StoreNews& news);

  // no_rights where the user has none in the group, and where there is no such user.
  std::string rights(std::string_view name, int group) const;
  bool has_rights(std::string_view name, int group) const;

 private:
  platform::Account* at(const std::string& name);
  // As the store has it, with what waits to be written here.
  platform::Account with_what_waits(platform::Account account, const platform::Account& held) const;

  StoreOutbox& outbox_;
  Held accounts_;
};

}  // namespace lineweir::server
