#pragma once

#include <iosfwd>

#include "desk/options.h"

namespace lineweir::desk {

// Runs the desk until the user, the script or a signal ends it. Keys are read from the standard
// input. On a terminal the picture is drawn anew whenever a lamp changes; elsewhere when it is
// asked for, and at the end.
void run_desk(const DeskOptions& options, std::ostream& out);

}  // namespace lineweir::desk
