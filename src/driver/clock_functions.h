#pragma once

#include <vector>

#include "driver/function_table.h"

namespace lineweir::driver {

// The clocks, and the editor of the show plan.
void append_clock_functions(std::vector<Function>& functions);

}  // namespace lineweir::driver
