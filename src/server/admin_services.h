#pragma once

#include <functional>
#include <string>

#include "platform/password_hash.h"
#include "platform/store.h"
#include "server/accounts.h"
#include "server/context.h"
#include "server/seat_book.h"

namespace lineweir::server {

// What an administrator's tool works on. All outlive its sessions.
struct AdminServices {
  const Context& context;
  platform::Store& store;
  platform::PasswordHash& passwords;
  Accounts& accounts;
  SeatBook& seats;
  Groups& groups;
  // The rights of a user have changed in the accounts: his seats are told.
  std::function<void(const std::string& user)> tell_new_rights;
  // The user's seats are told the sentence, in UTF-8, and end.
  std::function<void(const std::string& user, const std::string& why)> end_seats;
  std::function<void(int seconds, const std::string& text)> shut_down;
  // The accounts and what groups remember are read from the store again, as after a restoration.
  std::function<void(std::function<void(bool read)> done)> read_store_again;
};

}  // namespace lineweir::server
