#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "core/console.h"
#include "driver/values.h"

namespace lineweir::driver {

// The handler of that name, ready to run with these arguments: `Timer5_Timer`, `OnHybrid1_Click`
// with a line, `Form4_Command3D1_Click`, `Form_KeyDown` with a code and a shift. Nothing where
// there is no such element or event, or nobody handles it; NotUnderstood for arguments that don't
// fit.
std::function<void()> find_handler(Console& console, std::string_view name,
                                   const std::vector<Json>& arguments);

}  // namespace lineweir::driver
