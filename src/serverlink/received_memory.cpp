#include "serverlink/received_memory.h"

#include <utility>

#include "callerdata/known_callers.h"
#include "serverlink/server_link.h"
#include "state/console_state.h"

namespace lineweir {

ReceivedMemory::ReceivedMemory(ConsoleState& state, ServerLink& server, KnownCallers& known_callers)
    : state_(state), known_callers_(known_callers) {
  server.handle(ServerCommand::SrvCallerKnown,
                [this](const ServerPacket& packet) { this->SrvCallerKnown(packet); });
}

void ReceivedMemory::SrvCallerKnown(const ServerPacket& packet) {
  if (packet.GroupNo != state_.program.GroupNumber) return;
  const bool of_line = packet.LineNo != no_value;
  if (of_line && packet.LineNo >= state_.lines.LineCount) return;
  if (packet.Buffer.empty()) {
    if (of_line) known_callers_.forget(packet.LineNo);
    return;
  }
  auto known = decode_caller_known(packet.AltInfo, packet.Buffer);
  if (!known) return;
  if (of_line) {
    known_callers_.tell(packet.LineNo, std::move(*known));
  } else {
    known_callers_.answer(std::move(*known));
  }
}

}  // namespace lineweir
