#pragma once

namespace lineweir::platform {

// The memory of this process, in which passwords stand, comes into no core dump, and no other
// program of the same user reads it. Where LINEWEIR_MEMORY_DUMPS is set to "yes" in the environment
// nothing is done, for those who look for a fault; nor in a program that a sanitizer watches, which
// has to look at itself.
void keep_memory_out_of_dumps();

}  // namespace lineweir::platform
