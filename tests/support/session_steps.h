#pragma once

#include <cstdint>
#include <span>

#include "support/scripted_console.h"

namespace lineweir::test {

// Plays a session of a console with a server that says anything: a login, then frames with any
// fields in any order, bytes that are no frames, time, cuts, and the user's clicks. The bytes
// decide it all, two plays of the same bytes are the same.
class SessionSteps {
 public:
  explicit SessionSteps(ScriptedConsole& desk) : desk_(desk) {}

  void play(std::span<const std::uint8_t> bytes);

 private:
  std::uint8_t next();
  std::string text(std::size_t length);
  void take_step();
  void send_frame(std::uint8_t command);
  void connect();
  void click();

  ScriptedConsole& desk_;
  std::span<const std::uint8_t> bytes_;
};

}  // namespace lineweir::test
