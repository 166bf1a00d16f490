#pragma once

#include <vector>

#include "driver/function_table.h"

namespace lineweir::driver {

// The functions of call control that are no element's event.
void append_callcontrol_functions(std::vector<Function>& functions);

}  // namespace lineweir::driver
