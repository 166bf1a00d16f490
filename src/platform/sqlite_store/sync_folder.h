#pragma once

#include <filesystem>

namespace lineweir::platform {

// Brings to the disk which names are in the file's folder, as far as the system does that.
void sync_folder_of(const std::filesystem::path& file);

}  // namespace lineweir::platform
