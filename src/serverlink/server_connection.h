#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/event_loop.h"
#include "serverlink/server_round.h"

namespace lineweir {

class LineEvents;
class ServerLink;
struct ConsoleState;

inline constexpr std::string_view no_server_message =
    "Error communicating remote socket! No Server Available!";

// Why one of several servers is given up.
inline constexpr std::string_view server_unreachable = "It can't be reached.";
inline constexpr std::string_view server_silent = "No answer.";
inline constexpr std::string_view server_hung_up = "It has ended the connection.";

// The making of the socket's connection, to the first of the studio's servers that can be had.
class ServerConnection {
 public:
  // The user connects by hand for as long as one of these lives.
  class Turn {
   public:
    explicit Turn(ServerConnection& connection) : connection_(connection) { ++connection_.turns_; }
    ~Turn() { --connection_.turns_; }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

   private:
    ServerConnection& connection_;
  };

  ServerConnection(ConsoleState& state, ServerLink& server, LineEvents& line_events);

  // Told when another connection is asked for.
  std::function<void()> on_begin;

  bool in_hand() const { return turns_ > 0; }
  // Whether the last connection was asked for by hand. What is told of it may come behind its turn.
  bool begun_in_hand() const { return begun_in_hand_; }
  // False from the end of a connection that this side meant to end until the next one is asked for.
  bool wanted() const { return wanted_; }

  // Ends the connection, if there is one. What was sent before still goes out.
  void close();
  // The server has told its end: the same, but that another one is wanted where there is one. This
  // one isn't gone back to before its end has come.
  void leave();

  // Asks for another connection, to the first server of the present address, and starts with all
  // lines free.
  void begin();
  // The same for a console that comes back by itself: to the server that let the user in last.
  void begin_return();
  // The same to the server of the studio group that this console was sent to.
  void begin_there();
  // The same to the server that has sent it, and then to those of the present address.
  void begin_back();
  // The present group is served there, and not where the present address leads. A console that
  // comes back by itself asks there alone for a while, longer each time that it is sent there
  // again, and then at the present address too.
  void send_to(const StudioServer& server);
  // The same to the next one; the present one is given up. False where it was the last.
  bool begin_next(std::string_view why);

  // All lines are free until the server tells otherwise.
  void expect_free_lines();

  // What became of a connection that was asked for. It is superseded when another one is asked for
  // or the program ends meanwhile: whoever waits for it or for a session on it has no say any more.
  enum class Outcome { Stands, Failed, Superseded };

  // Lets events run until the connection stands. One that is refused, or takes more than 5 seconds,
  // has failed and is given up. Of several servers each has its share of that time, and the next
  // one is tried.
  Outcome await();
  // Gives the present server up, though it had been reached, and awaits the next one.
  Outcome await_next(std::string_view why);

  // What the user is told of one that has failed.
  std::string failure() const;
  // Whether the user is asked about the failure instead, in a window that says the same and more.
  bool failure_is_asked() const;
  // The user's answer to that is no: the next connection begins behind that server. False where
  // there is none, or something else was connected to since.
  bool pass_over_asked();

  // How often a connection was asked for.
  int attempts() const { return attempts_; }

  // Whether there are several servers, and their names.
  bool several() const { return servers_.size() > 1; }
  const std::vector<StudioServer>& servers() const { return servers_; }
  const StudioServer& present() const { return round_.present(); }
  // Whether the present one is the last that is to be tried.
  bool is_last() const { return round_.is_last(); }
  // How long one of several may be silent before the next one is tried.
  platform::Milliseconds share() const;
  // The present one has let the user in.
  void let_in();

 private:
  struct SentTo {
    StudioServer server;
    platform::Milliseconds holds;
    // Nothing while it isn't lost.
    std::optional<platform::Milliseconds> until = {};
  };
  struct ToldEnd {
    StudioServer server;
    platform::Milliseconds until;
  };

  // Those of the present address, behind the one that the console was sent to, and in front of the
  // one that has sent it.
  std::vector<StudioServer> known_servers() const;
  bool asks_there_alone();
  void begin_round(std::vector<StudioServer> servers);
  void connect();
  // Why the present one of several is to be given up; nothing while it isn't.
  std::optional<std::string> why_go_on(platform::Milliseconds waited) const;
  Outcome await_one();
  Outcome await_several();
  void tell_trying();
  void Winsock1_Connect();

  ConsoleState& state_;
  ServerLink& server_;
  LineEvents& line_events_;
  int turns_ = 0;
  bool begun_in_hand_ = false;
  int attempts_ = 0;
  bool wanted_ = true;

  std::vector<StudioServer> servers_;
  ServerRound round_{{StudioServer{}}};
  StudioServer had_;
  std::optional<SentTo> sent_to_;
  std::optional<StudioServer> sent_by_;
  std::optional<ToldEnd> told_end_;
  // What the next round by hand has in place of all servers.
  std::vector<StudioServer> behind_asked_;
  int asked_attempt_ = 0;
};

}  // namespace lineweir
