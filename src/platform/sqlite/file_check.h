#pragma once

#include <filesystem>

namespace lineweir::platform {

// Looks at a file before SQLite does, for what SQLite can't tell. A file that doesn't exist is a
// Failure of number 3024; a folder, or a database of the older Access kind, which is known by its
// first bytes, one of its own.
void check_database_file(const std::filesystem::path& file);

}  // namespace lineweir::platform
