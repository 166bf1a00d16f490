#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/password_hash.h"
#include "platform/store.h"
#include "server/accounts.h"
#include "server/context.h"
#include "server/login_desk.h"
#include "server/seat_book.h"

namespace lineweir::server {

// What an administrator's tool works on. All outlive its sessions; store and passwords, which
// answer later, outlive the server.
struct AdminServices {
  const Context& context;
  platform::Store& store;
  platform::PasswordHash& passwords;
  Accounts& accounts;
  LoginDesk& logins;
  SeatBook& seats;
  Groups& groups;
  // Until the store has been read nothing can be done.
  std::function<bool()> is_serving;
  // In what time the server ends, once that was told.
  std::function<std::optional<platform::Milliseconds>()> ends_in;
  // The rights of a user have changed in the accounts: his seats are told.
  std::function<void(const std::string& user)> tell_new_rights;
  // The user's seats are told the sentence, in UTF-8, and end.
  std::function<void(const std::string& user, const std::string& why)> end_seats;
  std::function<void(int seconds, const std::string& text)> shut_down;
  // The accounts and what groups remember are read from the store again, as after a restoration.
  std::function<void(std::function<void(bool read)> done)> read_store_again;
  // Ends with these services.
  std::shared_ptr<bool> there = std::make_shared<bool>(true);
};

// The call, as long as the services are there.
template <class Call>
auto while_there(const AdminServices& services, Call call) {
  return [there = std::weak_ptr(services.there), call = std::move(call)](const auto&... told) {
    if (there.lock()) call(told...);
  };
}

}  // namespace lineweir::server
