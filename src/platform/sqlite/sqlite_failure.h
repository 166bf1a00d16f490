#pragma once

#include <sqlite3.h>

#include <string>

#include "elements/failure.h"

namespace lineweir::platform {

// The Failure that a result code of SQLite stands for: a sentence for the user that names the file.
Failure sqlite_failure(int result_code, const std::string& file, const std::string& detail);

// The same for the connection's last error.
Failure sqlite_failure(int result_code, sqlite3* connection);

}  // namespace lineweir::platform
