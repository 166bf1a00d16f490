// Consoles that send anything to a server, whole frames and halves, before and after their logins,
// while its lines, store and configuration change, see ServerSteps. Nothing may crash, hang or
// stay behind, and no console may know anything but the truth about its own group.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "server/server_steps.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lineweir::server::ServerSteps steps({data, size});
  if (!steps.play()) {
    std::fprintf(stderr, "wrong: %s\n", steps.fault().c_str());
    std::abort();
  }
  return 0;
}
