#pragma once

#include <string>
#include <string_view>

namespace lineweir {

// Names of forms, elements and properties are looked up without regard to the case of the letters
// A to Z.
bool same_name(std::string_view a, std::string_view b);
std::string folded_name(std::string_view name);

}  // namespace lineweir
