// The two ends of the switch console's line under bytes of any kind. The first byte chooses ten or
// twenty lines, the letters of the lines and the mode; the rest is what the console receives, key
// by key, and what the simulated desk receives.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "callcontrol/switch_console_keys.h"
#include "callcontrol/switch_console_lamps.h"
#include "desk/desk.h"
#include "support/scripted_console.h"

using namespace lineweir;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

void prepare(test::ScriptedConsole& desk, unsigned choice) {
  Console& console = desk.console;
  const int lines = (choice & 1U) != 0 ? 20 : 10;
  console.Lineweir.Line20Mode.checked = (choice & 2U) != 0;
  console.layout.set_line_count(lines);
  console.layout.RedefineScreen();
  for (int line = 0; line < lines; ++line) {
    console.lines.StatusLetter(line) =
        "NCPORSHEL "[(choice / 4 + static_cast<unsigned>(line)) % 10];
  }
  if ((choice & 4U) != 0) {
    console.Lineweir.MitelPhone1.checked = (choice & 8U) != 0;
    console.Lineweir.ScreenerMode.on_click();
  }
  desk.platform.comm1.open();
  console.Lineweir.RemoteOn.on_click();
}

// The console's lamps are messages that the desk understands.
void check_lamps(test::ScriptedConsole& desk) {
  desk.platform.comm2.take_writes();
  desk.console.Lineweir.SwitchConsoleTimer.tick();
  desk::LampReader reader;
  for (const std::string& message : desk.platform.comm2.take_writes()) {
    // Two cadence bytes and an address.
    require(message.size() == 3);
    require(reader.receive(message).size() == 1);
  }
  require(reader.noise() == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view stream(reinterpret_cast<const char*>(data + 1), size - 1);

  test::ScriptedConsole desk("D");
  prepare(desk, data[0]);
  desk.take_trace();
  for (const char key : stream.substr(0, 64)) {
    desk.platform.comm2.arrive(std::string(1, key));
    desk.platform.loop.advance(platform::Milliseconds(60));
  }
  for (const std::string& line : desk.take_trace()) require(line.find("Error") == line.npos);

  check_lamps(desk);
  for (const auto layout : {desk::Layout::TenLines, desk::Layout::TwentyLines}) {
    desk::Desk whole(layout);
    desk::Desk pieces(layout);
    whole.receive(stream);
    for (const char byte : stream) pieces.receive({&byte, 1});
    require(whole.picture() == pieces.picture());
    require(whole.noise() == pieces.noise());
  }
  return 0;
}
