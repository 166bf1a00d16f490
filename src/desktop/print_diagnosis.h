#pragma once

#include <string>
#include <vector>

#include "desktop/command_line.h"

namespace lineweir {

// Prints what the program sees of its surroundings, with these screens. The status to end with: 1
// where something keeps the console from working. A QCoreApplication exists.
int print_diagnosis(const CommandLine& command_line, const std::vector<std::string>& screens);

}  // namespace lineweir
