#pragma once

#include <memory>
#include <string>

#include "serverlink/login_exchange.h"
#include "state/server_addresses.h"

namespace lineweir {

class AccessRights;
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
                 LoginExchange& exchange, AccessRights& rights, ServerWatch& watch);

 private:
  void SrvGroupElsewhere(const ServerPacket& packet);
  void go_there(const StudioServer& place);
  // The studio's server isn't there: back to the known address and the studio before, so that who
  // works there can go on.
  void come_back(const StudioServer& place);
  LoginResult log_in();
  std::string name_of_group() const;

  ConsoleState& state_;
  ServerLink& server_;
  ServerConnection& connection_;
  LoginExchange& exchange_;
  AccessRights& rights_;
  ServerWatch& watch_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace lineweir
