#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <string>

#include "base/failure.h"

namespace lineweir::platform {

// The file's name as sentences for the user have it: in quotes and without its folder.
std::string shown_name(const std::filesystem::path& file);
std::string shown_name(sqlite3* connection);

// The Failure that a result code of SQLite stands for: a sentence for the user that names the file.
Failure sqlite_failure(int result_code, const std::filesystem::path& file,
                       const std::string& detail);

// The same for the connection's last error.
Failure sqlite_failure(int result_code, sqlite3* connection);

}  // namespace lineweir::platform
