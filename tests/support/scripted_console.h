#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/console.h"
#include "platform/scripted/scripted_platform.h"

namespace lineweir::test {

// A console of its own on a workstation of its own, started and shown. It writes the trace unless
// another command line is given; the clock stands at 2026-01-05 10:00:00.
struct ScriptedConsole {
  explicit ScriptedConsole(std::string_view command_line = "D");

  // The same with this settings file.
  ScriptedConsole(std::string_view command_line, const std::string& settings_file);
  ~ScriptedConsole();

  // With texts in that set.
  explicit ScriptedConsole(const CodePage& page, const Transliterator* transliterator = nullptr);

  // The interface box sends these characters in one piece; the port is opened if it is closed.
  void box_sends(const std::string& characters) {
    if (!platform.comm1.is_open()) platform.comm1.open();
    platform.comm1.arrive(characters);
    platform.loop.run_pending();
  }

  // What was written to the trace since the last call, without date and time.
  std::vector<std::string> take_trace() { return std::exchange(trace, {}); }
  std::vector<std::string> take_messages() { return std::exchange(messages, {}); }

  platform::ScriptedPlatform platform;
  std::vector<std::string> trace;
  std::vector<std::string> messages;
  Console console{platform.services()};

 private:
  void start(std::string_view command_line);
};

}  // namespace lineweir::test
