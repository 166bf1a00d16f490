// Administrators' tools that ask a server anything, see AdminSteps: each line is answered once, and
// nothing crashes, hangs or is kept wrong.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "server/admin_steps.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lineweir::server::AdminSteps steps({data, size});
  if (!steps.play()) {
    std::fprintf(stderr, "wrong: %s\n", steps.fault().c_str());
    std::abort();
  }
  return 0;
}
