#pragma once

#include <istream>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "driver/session.h"

namespace lineweir::driver {

struct Reply {
  // "ok", "= VALUE" or "error TEXT", of printable ASCII.
  std::string line;
  // The command wasn't understood, or an expectation wasn't met.
  bool failed = false;
};

// Carries out a command line. Nothing for an empty line or a comment. Whatever the line holds, this
// returns.
std::optional<Reply> carry_out(Session& session, std::string_view line);

// Carries out all lines, writing and flushing each reply at once. Failures are told on `complaints`
// with the name and the line's number. Returns whether there were none.
bool carry_out_all(Session& session, std::istream& lines, const std::string& name,
                   std::ostream& replies, std::ostream& complaints);

}  // namespace lineweir::driver
