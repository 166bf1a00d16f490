#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "desk/desk_layout.h"
#include "desk/desk_script.h"

namespace lineweir::desk {

struct DeskOptions {
  Layout layout = Layout::TenLines;
  // Where to make a link to the device; empty for none.
  std::string link;
  // Where to write what happens: "-" for the standard output, empty for nowhere.
  std::string log;
  std::vector<TimedAction> script;
};

struct ParsedOptions {
  // Nothing where the program is to end at once.
  std::optional<DeskOptions> options;
  int exit_code = 0;
};

ParsedOptions parse_options(int argc, const char* const* argv, std::ostream& out,
                            std::ostream& err);

}  // namespace lineweir::desk
