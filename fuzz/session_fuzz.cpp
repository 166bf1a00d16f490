// A console in a session with a server that says anything, see SessionSteps. Nothing may crash,
// hang or leave the pointer waiting.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "support/session_steps.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lineweir::test::ScriptedConsole desk;
  lineweir::test::SessionSteps(desk).play({data, size});
  if (!desk.platform.ended && desk.console.Lineweir.mouse_pointer != lineweir::pointer_default) {
    std::abort();
  }
  return 0;
}
