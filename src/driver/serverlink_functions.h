#pragma once

#include <vector>

#include "driver/function_table.h"

namespace lineweir::driver {

// The functions of the server link.
void append_serverlink_functions(std::vector<Function>& functions);

}  // namespace lineweir::driver
