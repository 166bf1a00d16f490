#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace lineweir {

class LineEvents;
class ServerLink;
struct ConsoleState;

inline constexpr std::string_view no_server_message =
    "Error communicating remote socket! No Server Available!";

// The making of the socket's connection.
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

  // Asks for another connection, to the present host and port, and starts with all lines free.
  void begin();

  // All lines are free until the server tells otherwise.
  void expect_free_lines();

  // What became of a connection that was asked for. It is superseded when another one is asked for
  // or the program ends meanwhile: whoever waits for it or for a session on it has no say any more.
  enum class Outcome { Stands, Failed, Superseded };

  // Lets events run until the connection stands. One that is refused, or takes more than 5 seconds,
  // has failed and is given up.
  Outcome await();

  // What the user is told of one that has failed.
  std::string failure() const;
  // Whether the user is asked about the failure instead, in a window that says the same and more.
  bool failure_is_asked() const;

  // How often a connection was asked for.
  int attempts() const { return attempts_; }

 private:
  void Winsock1_Connect();

  ConsoleState& state_;
  ServerLink& server_;
  LineEvents& line_events_;
  int turns_ = 0;
  bool begun_in_hand_ = false;
  int attempts_ = 0;
  bool wanted_ = true;
};

}  // namespace lineweir
