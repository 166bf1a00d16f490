#pragma once

#include <string>

namespace lineweir {

// Runs the console in its windows until the user ends it: the program's exit code. The application
// object must exist. `argument` is the one argument of the command line, or empty.
int run_program(const std::string& argument);

}  // namespace lineweir
