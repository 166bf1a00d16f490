#pragma once

#include <functional>
#include <string>

namespace lineweir::server {

// In the order in which they matter to the one who reads the log.
enum class LogLevel { Error, Warning, Notice, Info, Debug };

// One line of UTF-8 without control characters; never a password.
using ServerLog = std::function<void(LogLevel level, const std::string& line)>;

}  // namespace lineweir::server
