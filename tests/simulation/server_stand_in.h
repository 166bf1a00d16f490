#pragma once

#include <array>
#include <list>
#include <memory>
#include <string>

#include "simulation/network.h"
#include "wire/server_packet_codec.h"
#include "wire/server_packet_framing.h"

namespace lineweir::simulation {

// Stands for the server of many seats as far as a console speaks with one: it lets everybody in,
// keeps the caller data of each line and passes them on to all seats, their sender included. Each
// seat that registers is told all of them.
class ServerStandIn {
 public:
  static constexpr int line_count = 10;

  // Network and transcript outlive the server.
  ServerStandIn(Network& network, Transcript& transcript, const std::string& address);
  ~ServerStandIn();
  ServerStandIn(const ServerStandIn&) = delete;
  ServerStandIn& operator=(const ServerStandIn&) = delete;

  // The caller data of a line as its last seat has told them; empty where there are none.
  const std::string& caller_data(int line) const { return data_[static_cast<std::size_t>(line)]; }

  // What came that is no frame of a console.
  int malformed_frames() const { return malformed_; }
  int frames() const { return frames_; }

 private:
  struct Session {
    std::string name;
    std::unique_ptr<Connection> connection;
    ReceiveBuffer received;
    bool registered = false;
  };

  void accept(std::unique_ptr<Connection> connection);
  void receive(Session& session, std::string_view bytes);
  void handle(Session& session, const ServerPacket& packet);
  void take_caller_data(const ServerPacket& packet);
  static void tell_caller_data(Session& session, int line, std::string text);
  static void send(Session& session, ServerPacket packet);

  Network& network_;
  Transcript& transcript_;
  std::string address_;
  std::list<Session> sessions_;
  std::array<std::string, line_count> data_;
  int sessions_begun_ = 0;
  int malformed_ = 0;
  int frames_ = 0;
};

}  // namespace lineweir::simulation
