#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "driver/session.h"
#include "driver/values.h"
#include "driver/words.h"

namespace lineweir::driver {

// A command by its usage, such as "serial P reply TEXT TEXT". It returns the value asked for, or
// nothing where the reply is "ok".
struct Command {
  std::string_view usage;
  std::optional<Json> (*run)(Session& session, const Arguments& arguments);
};

std::span<const Command> commands();

}  // namespace lineweir::driver
