#pragma once

#include <memory>
#include <string>

#include "state/server_addresses.h"

namespace lineweir {

class LoginExchange;
class ServerConnection;
class ServerLink;
class ServerWatch;
struct ConsoleState;
struct ServerPacket;

// A studio whose server is another one than the console has asked: it connects and logs in there by
// itself, and says so meanwhile. The kept address stays, so that the next start asks there again.
//
// From a server that is reached by TLS the console goes only to another such one, as the password
// goes with it.
class GroupElsewhere {
 public:
  GroupElsewhere(ConsoleState& state, ServerLink& server, ServerConnection& connection,
                 LoginExchange& exchange, ServerWatch& watch);

 private:
  void SrvGroupElsewhere(const ServerPacket& packet);
  void go_there(const StudioServer& place);
  std::string name_of_group() const;

  ConsoleState& state_;
  ServerLink& server_;
  ServerConnection& connection_;
  LoginExchange& exchange_;
  ServerWatch& watch_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace lineweir
