#pragma once

#include <string>

#include "platform/user_files.h"

namespace lineweir {

class ShowPlanStore;
struct ConsoleState;

// The files that no export and no document overwrites: the console's own, those of its logs, and
// any database. The sentences name the file that the user chose as it is shown.
platform::SparedFiles spared_files(const ConsoleState& state, const ShowPlanStore& show_plan,
                                   const std::string& shown_name);

}  // namespace lineweir
