#pragma once

namespace lineweir {

class KnownCallers;
class ServerLink;
struct ConsoleState;
struct ServerPacket;

// What the server tells of its memory of callers. What is of another group, of a line that this
// console doesn't have, or malformed, is passed over.
class ReceivedMemory {
 public:
  ReceivedMemory(ConsoleState& state, ServerLink& server, KnownCallers& known_callers);

 private:
  void SrvCallerKnown(const ServerPacket& packet);

  ConsoleState& state_;
  KnownCallers& known_callers_;
};

}  // namespace lineweir
