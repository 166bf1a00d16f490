#pragma once

#include <filesystem>
#include <string_view>

#include "letters/letters.h"

namespace lineweir::platform {

// The path in the spelling that it has on the disk. File names reach the console in the capitals of
// another system, so each part of the path that doesn't exist as written is looked up in its
// directory, ignoring the case of the letters A to Z; of several matches the first in byte order is
// taken. From the first part on that has no match the path is returned as written.
std::filesystem::path spelling_on_disk(const std::filesystem::path& path);

// Where the console's path leads, which may be relative to the directory: to the file whose name is
// these bytes if there is one, else to the one of that name in UTF-8.
std::filesystem::path place_on_disk(const std::filesystem::path& directory, std::string_view path,
                                    const Letters& letters);

}  // namespace lineweir::platform
