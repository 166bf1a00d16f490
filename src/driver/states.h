#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "driver/session.h"
#include "driver/values.h"

namespace lineweir::driver {

using Indices = std::vector<int>;

// State of the console that is no element, by its name. Both functions fail as the console does.
struct StateName {
  // Compared with a path's shape, ignoring case: "StatusLetter()".
  std::string shape;
  std::function<Json(Session&, const Indices&)> get;
  // Sets the state for preparing a case; none where it can only be read.
  std::function<void(Session&, const Indices&, const Json&)> set;
};

// Names of the line table may have "LineTable." in front. Null for an unknown name.
const StateName* find_state(std::string_view shape);

}  // namespace lineweir::driver
