#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "serverd/configuration.h"

namespace lineweir::serverd {

struct ProgramOptions {
  std::string configuration_file;
  // Only reads the configuration and tells what it means.
  bool check = false;
  // As the key of that name.
  bool plain_text_network = false;
  // In place of the key of that name.
  std::optional<SocketAddress> metrics = {};
  // Logs what only somebody who looks for a fault wants to know.
  bool verbose = false;
};

struct ParsedOptions {
  // Nothing where the program is to end at once.
  std::optional<ProgramOptions> options;
  int exit_code = 0;
};

// Help goes to `out`, a mistake as one line to `err`.
ParsedOptions parse_options(int argc, const char* const* argv, std::ostream& out,
                            std::ostream& err);

// The file that the options name, with what they say in its place. Throws ConfigurationError.
Configuration configuration_of(const ProgramOptions& options);

}  // namespace lineweir::serverd
