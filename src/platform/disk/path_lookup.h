#pragma once

#include <filesystem>

namespace lineweir::platform {

// The path in the spelling that it has on the disk. File names reach the console in the capitals of
// another system, so each part of the path that doesn't exist as written is looked up in its
// directory, ignoring the case of the letters A to Z; of several matches the first in byte order is
// taken. From the first part on that has no match the path is returned as written.
std::filesystem::path spelling_on_disk(const std::filesystem::path& path);

}  // namespace lineweir::platform
