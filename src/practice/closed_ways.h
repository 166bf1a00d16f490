#pragma once

#include <memory>
#include <string>

#include "platform/client_socket.h"
#include "platform/remote_objects.h"
#include "platform/serial_port.h"

namespace lineweir::practice {

// The ways that lead out of a practice console. Each is there and leads nowhere: what would open it
// fails as where there is no such device or server.

class ClosedPort final : public platform::SerialPort {
 public:
  int comm_port() const override { return comm_port_; }
  void set_comm_port(int number) override { comm_port_ = number; }
  bool is_open() const override { return false; }
  void open() override;
  void close() override {}
  std::string input() override { return {}; }
  void discard_input() override {}
  void output(std::string_view characters) override;

 private:
  int comm_port_ = 2;
};

class ClosedSocket final : public platform::ClientSocket {
 public:
  int state() const override { return platform::socket_closed; }
  void connect(const std::string&, int) override {}
  std::string refusal() const override;
  void close() override {}
  std::size_t bytes_received() const override { return 0; }
  std::string get_data() override { return {}; }
  void send_data(std::string_view bytes) override;
};

class NoRemoteObjects final : public platform::RemoteObjects {
 public:
  std::unique_ptr<platform::RemoteObject> create(const std::string& class_name) override;
};

}  // namespace lineweir::practice
