#pragma once

#include <optional>
#include <string_view>

#include "lines/line_table.h"
#include "state/dial_state.h"
#include "wire/server_packet_codec.h"

namespace lineweir {

// What a command word's frame depends on beside the word.
struct CommandContext {
  int GroupNumber;
  int ConsoleNumber;
  bool ScreenerMode;
  const LineTable& lines;
  const DialState& dial;
};

// The frame that carries a command word to the server. Nothing when the word is a digit and there
// is no line to dial it on. A number that doesn't fit its field is a Failure of number 5.
std::optional<ServerPacket> command_frame(std::string_view word, int bank,
                                          const CommandContext& context);

}  // namespace lineweir
