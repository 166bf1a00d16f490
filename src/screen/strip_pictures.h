#pragma once

#include <string>
#include <string_view>

namespace lineweir {

// The holder of a row's strip for that width: each of the three colours has a plain strip, as wide
// as beside ten rows at design size, a short one for narrower rows and a long one for wider.
std::string fitted_strip(std::string_view plain_strip, int width);

}  // namespace lineweir
