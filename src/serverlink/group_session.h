#pragma once

namespace lineweir {

class LoginExchange;
class ServerConnection;
class ServerLink;
struct ConsoleState;

// The socket's session in another studio group: the server checks the user anew, as the rights go
// by the group.
class GroupSession {
 public:
  GroupSession(ConsoleState& state, ServerLink& server, ServerConnection& connection,
               LoginExchange& exchange)
      : state_(state), server_(server), connection_(connection), exchange_(exchange) {}

  // With the new group's number. Lets events run until the server has answered; where it doesn't
  // let the user in, he is asked who he is. Returns whether the session has begun.
  bool enter();

 private:
  ConsoleState& state_;
  ServerLink& server_;
  ServerConnection& connection_;
  LoginExchange& exchange_;
};

}  // namespace lineweir
