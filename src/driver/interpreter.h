#pragma once

#include <filesystem>
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
//
// `include "FILE"` carries out the commands of another script, whose path is that of the folder on;
// its reply is the first one that failed, with its place, or "ok". Scripts include one another at
// most eight deep.
std::optional<Reply> carry_out(Session& session, std::string_view line,
                               const std::filesystem::path& folder = {}, int depth = 0);

// Carries out all lines, writing and flushing each reply at once. Failures are told on `complaints`
// with the name and the line's number. Returns whether there were none. The name is the script's
// path, from whose folder on others are included, or empty.
bool carry_out_all(Session& session, std::istream& lines, const std::string& name,
                   std::ostream& replies, std::ostream& complaints);

}  // namespace lineweir::driver
