#pragma once

#include <filesystem>

#include "server/server_options.h"
#include "serverd/configuration_table.h"

namespace lineweir::serverd {

// Reads a table [[group]]. The device of a box is relative to the folder. Throws
// ConfigurationError.
server::GroupOptions read_group(ConfigurationTable& table, const std::filesystem::path& folder);

}  // namespace lineweir::serverd
