#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "server/accounts.h"
#include "server/context.h"
#include "server/end_notice.h"
#include "server/login_desk.h"
#include "server/seat_book.h"
#include "server/server_options.h"

namespace lineweir::server {

// What the sessions of all consoles share. All outlive them.
struct SessionServices {
  const Context& context;
  Accounts& accounts;
  LoginDesk& logins;
  SeatBook& seats;
  Groups& groups;
  const StudioPlaces& places;
  const std::vector<FixedSeat>& fixed_seats;
  // What a user is told at the next login, by user and address.
  std::map<std::string, std::string>& told_at_login;
  // Nothing while no end is told.
  const std::optional<EndNotice>& end_notice;
};

}  // namespace lineweir::server
