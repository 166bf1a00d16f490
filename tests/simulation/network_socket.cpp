#include "simulation/network_socket.h"

#include <utility>

#include "base/failure.h"

namespace lineweir::simulation {

void NetworkSocket::connect(const std::string& host, int port) {
  if (state_ != platform::socket_closed) {
    throw Failure(failure_number::socket_wrong_state, "The socket is already in use");
  }
  received_.clear();
  state_ = platform::socket_connecting;
  attempt_ = std::make_shared<int>();
  network_.connect(
      network_address(host, port),
      [this, attempt = std::weak_ptr(attempt_)](std::unique_ptr<Connection> end) {
        if (!attempt.expired()) attach(std::move(end));
      },
      origin_);
}

void NetworkSocket::close() {
  state_ = platform::socket_closed;
  attempt_.reset();
  connection_.reset();
  received_.clear();
}

std::string NetworkSocket::get_data() { return std::exchange(received_, {}); }

void NetworkSocket::send_data(std::string_view bytes) {
  if (state_ != platform::socket_connected) {
    throw Failure(failure_number::socket_wrong_state, "The socket is not connected");
  }
  connection_->send(bytes);
}

void NetworkSocket::restart() {
  on_connect.forget_handler();
  on_data_arrival.forget_handler();
  close();
}

void NetworkSocket::attach(std::unique_ptr<Connection> connection) {
  attempt_.reset();
  connection_ = std::move(connection);
  state_ = connection_ ? platform::socket_connected : platform::socket_closed;
  if (!connection_) return;
  connection_->on_bytes = [this](std::string_view bytes) {
    received_ += bytes;
    on_data_arrival();
  };
  // What had arrived can still be taken.
  connection_->on_closed = [this] { state_ = platform::socket_closed; };
  on_connect();
}

std::string network_address(const std::string& host, int port) {
  return host + ':' + std::to_string(port);
}

}  // namespace lineweir::simulation
