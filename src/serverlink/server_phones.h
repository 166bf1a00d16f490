#pragma once

namespace lineweir {

class KnownCallers;
class Links;
class Modes;
class ServerLink;
struct ConsoleState;
struct ServerPacket;

// The kind of the studio's telephone equipment, and with kind 4 the telephones to choose from.
class ServerPhones {
 public:
  ServerPhones(ConsoleState& state, ServerLink& server, const Links& links, Modes& modes,
               KnownCallers& known_callers);

 private:
  void SrvPhoneType(const ServerPacket& packet);
  void SrvPhoneNames(const ServerPacket& packet);
  void GetPhones_Timer();

  void check_chosen_phone();

  ConsoleState& state_;
  const Links& links_;
  Modes& modes_;
  KnownCallers& known_callers_;
};

}  // namespace lineweir
