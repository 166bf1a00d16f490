#pragma once

#include <optional>
#include <string>
#include <vector>

#include "driver/session.h"
#include "driver/values.h"

namespace lineweir::driver {

// Carries out a command line's words. Returns the value asked for, or nothing where the reply is
// "ok"; fails as the commands do, and NotUnderstood where there is no such command.
std::optional<Json> run_command(Session& session, const std::vector<std::string>& words);

}  // namespace lineweir::driver
