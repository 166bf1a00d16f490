#pragma once

#include <optional>
#include <string>
#include <vector>

#include "driver/session.h"
#include "driver/values.h"

namespace lineweir::driver {

// Calls one of the console's functions or handlers by its name, as the program itself would,
// whatever can be seen or clicked. A handler has the name of its element and of its event, with the
// form's in front where that isn't the main form, and the element's index as its first argument.
// Returns nothing for what has no result.
std::optional<Json> call_function(Session& session, const std::string& name,
                                  const std::vector<Json>& arguments);

}  // namespace lineweir::driver
