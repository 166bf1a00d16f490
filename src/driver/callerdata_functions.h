#pragma once

#include <vector>

#include "driver/function_table.h"

namespace lineweir::driver {

// The functions of caller data and the call log that a script can call.
void append_callerdata_functions(std::vector<Function>& functions);

}  // namespace lineweir::driver
