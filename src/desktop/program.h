#pragma once

#include "desktop/command_line.h"

namespace lineweir {

// Gives all windows the style, the colours and the font of this program. To be called once, when
// the application object exists.
void dress_application();

// Runs the console in its windows until the user ends it: the program's exit code. The application
// must have been dressed.
int run_program(const CommandLine& command_line);

}  // namespace lineweir
