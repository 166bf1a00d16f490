#pragma once

#include <vector>

#include "driver/function_table.h"

namespace lineweir::driver {

// The functions of the screen: rows, layouts, columns, fonts.
void append_screen_functions(std::vector<Function>& functions);

}  // namespace lineweir::driver
