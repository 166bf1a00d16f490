#pragma once

#include <string>

namespace lineweir::admin {

// The first line of the standard input, as it stands there.
std::string read_password_line();

// Asked twice without echo on the terminal that the standard input is. Trouble where it is none, or
// where the two differ.
std::string ask_password(const std::string& user);

}  // namespace lineweir::admin
