#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "studio/boxed_exchange.h"

namespace lineweir::studio {

struct StudioOptions {
  BoxedExchangeOptions exchange;  // with the script read, and the duration as an event of its own
  std::string link;               // empty for none
  std::string log;                // empty for none, "-" for the standard output
};

struct ParsedOptions {
  std::optional<StudioOptions> options;  // none when the program has nothing more to do
  int exit_code = 0;                     // then this is its answer
};

// Reads the command line, and the script that it names. What the user must be told goes to `out`
// (help) and `err` (a mistake).
ParsedOptions parse_options(int argc, const char* const* argv, std::ostream& out,
                            std::ostream& err);

}  // namespace lineweir::studio
