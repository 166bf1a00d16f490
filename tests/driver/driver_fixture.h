#pragma once

#include <string>
#include <string_view>

#include "driver/interpreter.h"

namespace lineweir::test {

// A conversation with the driver. Its files are in memory.
struct DriverFixture {
  // The reply to a command line; empty for a line that has none.
  std::string say(std::string_view line) {
    const auto reply = driver::carry_out(session, line);
    return reply ? reply->line : std::string();
  }
  bool fails(std::string_view line) { return driver::carry_out(session, line)->failed; }

  platform::MemoryFiles files;
  driver::Session session{files};
};

// The same with a console that has been launched and writes the trace.
struct LaunchedFixture : DriverFixture {
  LaunchedFixture() { say("launch \"D\""); }
};

}  // namespace lineweir::test
