#pragma once

namespace lineweir {

class Links;
class ServerLink;
struct ConsoleState;
struct ServerPacket;

// The server is asked for its time at intervals. Its answers set the workstation's clock if the
// user wants that, and show that it is still there; it is lost when two in a row stay out.
class TimeSync {
 public:
  TimeSync(ConsoleState& state, const Links& links, ServerLink& server);

 private:
  void SyncTimeTimer_Timer();
  void SrvTime(const ServerPacket& packet);

  ConsoleState& state_;
  const Links& links_;
  ServerLink& server_;
};

}  // namespace lineweir
