#pragma once

#include <functional>
#include <optional>

#include "wire/server_packet_codec.h"

namespace lineweir {

class MessageDisplay;
class Modes;
class ServerLink;
struct ConsoleState;

// What the user may do: the rights come with the answers to a login and by themselves, and go by
// the studio group. A user without any in a group is sent to one that is open to him.
class AccessRights {
 public:
  AccessRights(ConsoleState& state, ServerLink& server, Modes& modes, MessageDisplay& display);

  // The server holds nothing for the user: the options of the settings file hold.
  std::function<void()> on_unknown_user;

  // Asks for the rights of the user in another group, and for a group that is open to him.
  void RequestAccessRights(int group);
  void RequestFirstUnblocked();

  // The answer to a login, until the next one is asked for: one that other frames follow in the
  // same packet is none the less there. Another answer's code where none has come.
  void expect_answer();
  int answer() const;

  // Enables what UserRights allows and disables the rest.
  void SetRights();

 private:
  void SrvLoginCheckResult(const ServerPacket& packet);
  void SrvPasswordResult(const ServerPacket& packet);
  void SrvRights(const ServerPacket& packet);

  // Takes rights and profile out of the answer's buffer; returns whether the user has rights here.
  bool take(const ServerPacket& answer);
  bool profile_is_of_other_group() const;
  void request(ClientCommand command, int group);

  ConsoleState& state_;
  ServerLink& server_;
  Modes& modes_;
  MessageDisplay& display_;
  std::optional<int> answer_;
};

}  // namespace lineweir
