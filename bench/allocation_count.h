#pragma once

#include <cstdint>

namespace lineweir {

// How often memory was taken since the program began, by whatever part of it.
std::int64_t allocation_count();

}  // namespace lineweir
