#include "server/admin_users.h"

#include <algorithm>
#include <utility>

#include "adminlink/admin_columns.h"
#include "server/accounts.h"
#include "server/admin_names.h"
#include "server/rights_templates.h"
#include "wire/rights_layout.h"

namespace lineweir::server {
namespace {

using admin::Field;
using nlohmann::json;

AdminReply no_such_user(const std::string& name) {
  return refused("There is no user " + in_quotes(name) + ".");
}

// Hashes the password and runs `next` with the hash; a password that is none is refused.
void with_hash(const AdminServices& services, const std::string& password, const TellReply& tell,
               std::function<void(const std::string& hash)> next) {
  if (auto why = why_no_password(password, services.context.letters); !why.empty()) {
    return tell(refused(std::move(why)));
  }
  services.passwords.hash(
      password, while_there(services, [tell, next = std::move(next)](const std::string& hash) {
        if (hash.empty()) return tell(refused("The machine has no memory left for a password."));
        next(hash);
      }));
}

json row_of_user(const AdminServices& services, const platform::Account& account) {
  json groups = json::array();
  for (const auto& [group, rights] : account.rights) {
    if (rights != no_rights) groups.push_back(group);
  }
  const auto locked_for = services.logins.locked_for(account.name);
  const bool is_locked = locked_for > platform::Milliseconds{0};
  const auto& seats = services.seats.all();
  return {{"name", account.name},
          {"groups", std::move(groups)},
          {"locked", account.locked},
          {"locked_until", is_locked ? (services.context.clock.now() + locked_for).count() : 0},
          {"last_seen", account.last_seen.count()},
          {"seats", std::ranges::count(seats, account.name, &Seat::user)}};
}

// Changes something of the account of the request's user and keeps it.
template <class Change>
void change_user(const AdminServices& services, const admin::Request& request,
                 const TellReply& tell, const std::string& action, const Change& change) {
  const std::string& name = request.text(Field::Name);
  if (services.accounts.find(name) == nullptr) return tell(no_such_user(name));
  change(services.accounts, name);
  services.context.audit.note(administrator, action, name);
  tell_done(services, tell);
}

}  // namespace

void add_user(const AdminServices& services, const admin::Request& request, const TellReply& tell) {
  const std::string& name = request.text(Field::Name);
  const auto is_there = [&services, name] { return services.accounts.find(name) != nullptr; };
  const auto already = refused("There is a user " + in_quotes(name) + " already.").refusal;
  if (auto why = why_no_user_name(name, services.context.letters); !why.empty()) {
    return tell(refused(std::move(why)));
  }
  if (is_there()) return tell(refused(already));
  const std::string& template_name = request.text(Field::Template);
  const auto work = find_rights_template(template_name);
  if (!work) return tell(refused("A template is \"engineer\", \"host\" or \"screener\"."));
  platform::Account account;
  account.name = name;
  for (const std::int64_t group : request.numbers(Field::Groups)) {
    if (services.seats.find_group(static_cast<int>(group)) == nullptr) {
      return tell(no_such_group(group));
    }
    account.rights[static_cast<int>(group)] = rights_of(*work);
  }
  if (account.rights.empty()) account.rights[every_group] = rights_of(*work);

  with_hash(services, request.text(Field::Password), tell,
            [&services, tell, is_there, already, account,
             template_name](const std::string& hash) mutable {
              // It may have been added meanwhile.
              if (is_there()) return tell(refused(already));
              account.password_hash = hash;
              services.context.audit.note(administrator, "user added",
                                          account.name + ", " + template_name);
              services.accounts.add(std::move(account));
              tell_done(services, tell);
            });
}

void list_users(const AdminServices& services, const TellReply& tell) {
  AdminList::Rows rows;
  for (const auto& [name, account] : services.accounts.all()) {
    rows.push_back(row_of_user(services, account));
  }
  tell({.list = std::make_unique<AdminList>(std::move(rows))});
}

void change_password(const AdminServices& services, const admin::Request& request,
                     const TellReply& tell) {
  const std::string& name = request.text(Field::Name);
  if (services.accounts.find(name) == nullptr) return tell(no_such_user(name));
  with_hash(services, request.text(Field::Password), tell,
            [&services, tell, request](const std::string& hash) {
              change_user(services, request, tell, "password changed",
                          [&](Accounts& accounts, const std::string& user) {
                            accounts.set_password(user, hash);
                          });
            });
}

void lock_user(const AdminServices& services, const admin::Request& request,
               const TellReply& tell) {
  const std::string& name = request.text(Field::Name);
  change_user(services, request, tell, "user locked",
              [](Accounts& accounts, const std::string& user) { accounts.set_locked(user, true); });
  services.end_seats(name, "An administrator has locked the user " + name + ".");
}

void unlock_user(const AdminServices& services, const admin::Request& request,
                 const TellReply& tell) {
  services.logins.forgive(request.text(Field::Name));
  change_user(
      services, request, tell, "user unlocked",
      [](Accounts& accounts, const std::string& user) { accounts.set_locked(user, false); });
}

void remove_user(const AdminServices& services, const admin::Request& request,
                 const TellReply& tell) {
  const std::string name = request.text(Field::Name);
  if (services.accounts.find(name) == nullptr) return tell(no_such_user(name));
  services.accounts.remove(name);
  services.context.audit.note(administrator, "user removed", name);
  services.end_seats(name, "An administrator has removed the user " + name + ".");
  tell_done(services, tell);
}

void show_profile(const AdminServices& services, const admin::Request& request,
                  const TellReply& tell) {
  const std::string& name = request.text(Field::Name);
  const platform::Account* account = services.accounts.find(name);
  if (account == nullptr) return tell(no_such_user(name));
  tell({.answer = {{std::string(admin::key::profile),
                    services.context.letters.to_utf8(account->profile)}}});
}

void reset_profile(const AdminServices& services, const admin::Request& request,
                   const TellReply& tell) {
  change_user(services, request, tell, "profile reset",
              [](Accounts& accounts, const std::string& user) { accounts.save_profile(user, {}); });
}

}  // namespace lineweir::server
