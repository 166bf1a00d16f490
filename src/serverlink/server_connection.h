#pragma once

namespace lineweir {

class LineEvents;
struct ConsoleState;

// The making of the socket's connection.
class ServerConnection {
 public:
  ServerConnection(ConsoleState& state, LineEvents& line_events);

  // Ends the connection, if there is one. What was sent before goes out first.
  void close();

  // Asks for another connection, to the present host and port, and starts with all lines free.
  void begin();

  // All lines are free until the server tells otherwise.
  void expect_free_lines();

  // Lets events run until the connection stands. One that takes more than 5 seconds has failed and
  // is given up: the user is told, the pointer is the default again, and the result is false.
  bool await();

 private:
  void Winsock1_Connect();

  ConsoleState& state_;
  LineEvents& line_events_;
};

}  // namespace lineweir
