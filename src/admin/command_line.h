#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "admin/migration.h"
#include "admin/when.h"
#include "adminlink/admin_request.h"

namespace lineweir::admin {

// What the command line says.
struct Order {
  std::string socket = "/run/lineweir/admin.sock";
  bool json = false;
  bool csv = false;
  Request request = {};
  // In place of a request: what is done without a server.
  std::optional<Migration> migration = {};
  // Where the request needs a password: whether it comes from the standard input, and not from the
  // person at the terminal.
  bool password_from_input = false;

  bool needs_password() const;
};

struct Help {
  std::string text;
};

// Of the words behind the program's name. Trouble where they are no order.
std::variant<Order, Help> read_command_line(std::vector<std::string> words, Moment now);

}  // namespace lineweir::admin
