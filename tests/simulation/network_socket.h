#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/client_socket.h"
#include "simulation/network.h"

namespace lineweir::simulation {

// A console's socket on the simulated network.
class NetworkSocket final : public platform::ClientSocket {
 public:
  // `origin` is where the workstation is.
  explicit NetworkSocket(Network& network, std::string origin = {})
      : network_(network), origin_(std::move(origin)) {}

  int state() const override { return state_; }
  void connect(const std::string& host, int port) override;
  void close() override;
  std::size_t bytes_received() const override { return received_.size(); }
  std::string get_data() override;
  void send_data(std::string_view bytes) override;

  // As Connection::silence.
  Milliseconds silence() const { return connection_ ? connection_->silence() : Milliseconds{0}; }

  // The console that used the socket has ended.
  void restart();

 private:
  void attach(std::unique_ptr<Connection> connection);

  Network& network_;
  std::string origin_;
  int state_ = platform::socket_closed;
  // Tells the attempt that is under way from those given up; shared with what the network holds.
  std::shared_ptr<int> attempt_;
  std::unique_ptr<Connection> connection_;
  std::string received_;
};

std::string network_address(const std::string& host, int port);

}  // namespace lineweir::simulation
