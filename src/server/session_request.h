#pragma once

#include <optional>

#include "server/session.h"
#include "wire/rights_layout.h"

namespace lineweir::server {

// How far a console must have come for what it asks.
enum class Needs { Nothing, LetIn, Registered };

// A frame that a console may send, and what it takes.
struct Session::Request {
  ClientCommand command;
  Needs needs;
  void (Session::*answer)(const ServerPacket& packet);
  // Without it the frame is refused.
  std::optional<Right> right = std::nullopt;
  // It works the lines, which a user who is forced into passive mode can't.
  bool works_lines = false;
  // LineNo is a line of the group.
  bool names_line = false;
  // Console is the number that the seat will have.
  bool changes_console = false;
};

}  // namespace lineweir::server
