#pragma once

namespace lineweir {

// Of all programs that are built together, such as "0.1.0".
extern const char* const program_version;

}  // namespace lineweir
