#pragma once

namespace lineweir {

class MessageDisplay;
class ServerConnection;
class ServerLink;
struct ConsoleState;
struct ServerPacket;

// What the server has to say to the user: messages of other seats and its own, the show's events,
// and that it will shut down.
class ServerNotices {
 public:
  ServerNotices(ConsoleState& state, ServerLink& server, ServerConnection& connection,
                MessageDisplay& display);

 private:
  void SrvFlashMessage(const ServerPacket& packet);
  void SrvMessage(const ServerPacket& packet);
  void SrvShutdownNotice(const ServerPacket& packet);
  void SrvShowTimes(const ServerPacket& packet);
  void ShutDownTimer_Timer();

  ConsoleState& state_;
  ServerConnection& connection_;
  MessageDisplay& display_;
};

// How long before the server's end the console leaves it, in milliseconds from the notice; a
// server tells at most a minute.
int shutdown_interval(int seconds);

}  // namespace lineweir
