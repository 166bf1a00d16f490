#pragma once

#include <filesystem>
#include <string_view>

#include "server/server_options.h"
#include "serverd/configuration_table.h"

namespace lineweir::serverd {

// How GroupOptions::exchange begins where a box is the exchange; its device stands behind.
inline constexpr std::string_view exchange_at_box = "box:";

// Reads a table [[group]]. The device of a box is relative to the folder. Throws
// ConfigurationError.
server::GroupOptions read_group(ConfigurationTable& table, const std::filesystem::path& folder);

}  // namespace lineweir::serverd
