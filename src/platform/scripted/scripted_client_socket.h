#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/client_socket.h"
#include "platform/event_loop.h"

namespace lineweir::platform {

// A TCP client whose server is a script.
class ScriptedClientSocket final : public ClientSocket {
 public:
  // The loop outlives the socket.
  explicit ScriptedClientSocket(EventLoop& loop) : loop_(loop) {}

  int state() const override { return state_; }
  void connect(const std::string& host, int port) override;
  std::string refusal() const override { return refusal_; }
  bool refusal_is_asked() const override { return refusal_asked_ && !refusal_.empty(); }
  void close() override;
  std::size_t bytes_received() const override { return received_.size(); }
  std::string get_data() override;
  void send_data(std::string_view bytes) override;

  // Whether the server takes connections, from now on. At first it takes none.
  void accept_connections(bool accepts) { accepts_ = accepts; }
  // The server takes none, and why is known; the user may be asked about it.
  void refuse_connections(const std::string& why, bool asked = false) {
    accepts_ = false;
    why_not_ = why;
    asked_ = asked;
  }
  // What a server at one host does, from now on, in place of what is told above of all.
  enum class Server {
    Accepts,
    Refuses,
    // Nobody answers the connection.
    Silent,
    // Accepts, and answers nothing.
    Mute,
    // Accepts, and ends the connection with the first that it is sent.
    HangsUp
  };
  void set_server(const std::string& host, Server server) { servers_[host] = server; }
  // The same of one that is refused for a reason, about which the user may be asked.
  void refuse_at(const std::string& host, const std::string& why, bool asked = false) {
    refusals_[host] = {why, asked};
  }
  // "HOST:PORT" of each `connect` since the last call.
  std::vector<std::string> take_connects();

  // The bytes arrive when the loop next runs what is due; without a connection they are lost.
  void arrive(const std::string& bytes) { arrive(bytes, Milliseconds{0}); }
  // From now on each write that is a frame of this command code is answered.
  void reply(int command, const std::string& answer);
  // The server ends the connection. What had arrived can still be taken.
  void drop() { state_ = socket_closed; }
  // The connection stands, as though it had been made before; nobody is told.
  void stand_connected();

  // Each write since the last call.
  std::vector<std::string> take_writes();
  // What the last `connect` named.
  const std::string& host() const { return host_; }
  int port() const { return port_; }

  // As ScriptedSerialPort::restart.
  void restart();

 private:
  struct Refusal {
    std::string why;
    bool asked = false;
  };

  void arrive(const std::string& bytes, Milliseconds delay);
  Server server_at(const std::string& host) const;
  void answer_connection();

  EventLoop& loop_;
  int state_ = socket_closed;
  // Tells what is on its way on this connection from what was on its way on one before.
  std::uint64_t connection_ = 0;
  bool accepts_ = false;
  std::string why_not_;
  bool asked_ = false;
  std::string refusal_;
  bool refusal_asked_ = false;
  std::map<std::string, Server> servers_;
  std::map<std::string, Refusal> refusals_;
  std::vector<std::string> connects_;
  std::string host_;
  int port_ = 0;
  std::string received_;
  std::vector<std::string> writes_;
  std::map<int, std::string> replies_;
};

}  // namespace lineweir::platform
