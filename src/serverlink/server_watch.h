#pragma once

#include <optional>
#include <set>
#include <string_view>

#include "base/date_time.h"
#include "platform/event_loop.h"
#include "serverlink/heartbeat.h"
#include "wire/server_packet_commands.h"

namespace lineweir {

class LinkWatch;
class Links;
class LoginExchange;
class ServerConnection;
class ServerLink;
class SocketLink;
struct ConsoleState;
struct ServerPacket;

// Notices within three seconds that a server with a heartbeat has fallen silent. Then the window
// says so and its keys are locked, as nobody knows what the lines do; the console connects and logs
// in again by itself, every two seconds, until the whole state of the studio is there once more. A
// server without a heartbeat is never watched.
//
// Of several servers one that ends its connection is missed at once. The console goes through them
// all, beginning with the one that it had: one that takes no connection or ends it is passed over
// at once, one that is silent after a second. Each third time it waits two seconds, for servers
// that are far away.
class ServerWatch {
 public:
  ServerWatch(ConsoleState& state, const Links& links, SocketLink& socket_link, ServerLink& server,
              ServerConnection& connection, LoginExchange& exchange, LinkWatch& link);
  ~ServerWatch();

  // The console has lost its server and comes back by itself.
  bool is_coming_back() const { return step_ != Step::NotLost; }
  // Its studio is served elsewhere, as it has just been told.
  void come_back_elsewhere();
  // The server that the console has gone to has a heartbeat, though it hasn't been heard yet.
  void expect_heartbeat();
  // There is no server at all now, and the console goes on looking for one by itself.
  void come_back_later();

  static constexpr platform::Milliseconds longest_silence{3000};
  static constexpr platform::Milliseconds between_tries{2000};
  static constexpr platform::Milliseconds between_rounds{1000};
  static constexpr platform::Milliseconds patience{1000};
  static constexpr platform::Milliseconds long_patience{2000};
  // How long the state of the studio may take to come in.
  static constexpr platform::Milliseconds state_limit{5000};

 private:
  // How far the present try to come back has got.
  enum class Step { NotLost, BetweenTries, Connecting, LoggingIn, Registering, Refused };

  void hear(const ServerPacket& packet);
  void look_in(platform::Milliseconds delay);
  void look();
  void look_for_silence();
  bool watches() const;

  void lose();
  void come_back();
  void connect();
  void follow_connection();
  // The present server isn't there.
  void give_up(std::string_view why);
  platform::Milliseconds present_patience() const;
  // Why the console must come back at once; what it says of the servers meanwhile.
  bool is_cut_off() const;
  void tell_silence();
  void log_in();
  void follow_answer();
  void keep_what_is_chosen_here();
  void follow_state();
  void go_to(Step step);
  void wait_for_next_try();
  // The banner goes.
  void end();

  ConsoleState& state_;
  const Links& links_;
  SocketLink& socket_link_;
  ServerLink& server_;
  ServerConnection& connection_;
  LoginExchange& exchange_;
  LinkWatch& link_;

  std::optional<platform::EventLoop::CallId> next_look_;
  Heartbeat heartbeat_;
  bool heart_is_known_ = false;
  // Before it was heard the end of the connection is missed, or its silence too.
  bool end_is_missed_ = false;
  bool silence_is_missed_ = false;
  platform::Milliseconds heard_at_{0};
  platform::DateTime heard_at_time_{};

  Step step_ = Step::NotLost;
  platform::Milliseconds step_began_{0};
  // A round where there are several servers.
  platform::Milliseconds try_began_{0};
  int tries_ = 0;
  // What the server has yet to tell until the screen is right again.
  std::set<ServerCommand> missing_;
};

}  // namespace lineweir
