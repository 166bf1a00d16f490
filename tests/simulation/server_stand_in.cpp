#include "simulation/server_stand_in.h"

#include <utility>

#include "support/server_packet.h"

namespace lineweir::simulation {
namespace {

using test::all_rights;
using test::server_packet;

constexpr std::uint8_t accepted_mark = 'F';

const ClientCommandRow* client_row(std::uint8_t code) {
  for (const ClientCommandRow& row : client_commands) {
    if (static_cast<std::uint8_t>(row.command) == code) return &row;
  }
  return nullptr;
}

// A seat that begins anew doesn't know what it told before, and passes over what bears its own
// name.
std::string in_servers_name(const std::string& text) {
  auto details = decode_caller_data(text);
  if (!details) return text;
  details->sender = "Server";
  return encode_caller_data(*details);
}

}  // namespace

ServerStandIn::ServerStandIn(Network& network, Transcript& transcript, const std::string& address)
    : network_(network), transcript_(transcript), address_(address) {
  network.listen(address,
                 [this](std::unique_ptr<Connection> connection) { accept(std::move(connection)); });
}

ServerStandIn::~ServerStandIn() { network_.stop_listening(address_); }

void ServerStandIn::accept(std::unique_ptr<Connection> connection) {
  // A session stays in its place in the list, and so do the calls that name it.
  Session& session = sessions_.emplace_back();
  session.name = "server, session " + std::to_string(++sessions_begun_);
  session.connection = std::move(connection);
  session.connection->on_bytes = [this, &session](std::string_view bytes) {
    receive(session, bytes);
  };
  session.connection->on_closed = [this, &session] {
    transcript_.add(session.name, "gone");
    session.registered = false;
  };
}

void ServerStandIn::receive(Session& session, std::string_view bytes) {
  session.received.append(bytes);
  while (const auto body = session.received.first_body()) {
    const ServerPacket packet = packet_of(*body);
    session.received.drop_first();
    handle(session, packet);
  }
}

void ServerStandIn::handle(Session& session, const ServerPacket& packet) {
  ++frames_;
  const ClientCommandRow* row = client_row(packet.CMD);
  transcript_.add(session.name, std::string(row == nullptr ? "no command" : row->name) + " " +
                                    std::to_string(packet.LineNo) + " " + packet.Buffer);
  if (row == nullptr) {
    ++malformed_;
    return;
  }
  switch (row->command) {
    case ClientCommand::CmdLoginCheck: {
      ServerPacket answer = server_packet(ServerCommand::SrvLoginCheckResult);
      answer.AltInfo = accepted_mark;
      answer.set_buffer(std::string(all_rights));
      return send(session, std::move(answer));
    }
    case ClientCommand::CmdConnectConsole:
      session.registered = true;
      for (int line = 0; line < line_count; ++line) {
        tell_caller_data(session, line, in_servers_name(caller_data(line)));
      }
      return;
    case ClientCommand::CmdLeaveGroup:
      session.registered = false;
      return;
    case ClientCommand::CmdCallerData:
      return take_caller_data(packet);
    default:
      return;
  }
}

void ServerStandIn::take_caller_data(const ServerPacket& packet) {
  const bool whole = packet.Buffer.empty() || decode_caller_data(packet.Buffer).has_value();
  if (packet.LineNo >= line_count || !whole) {
    ++malformed_;
    return;
  }
  data_[packet.LineNo] = packet.Buffer;
  for (Session& session : sessions_) {
    if (session.registered) tell_caller_data(session, packet.LineNo, packet.Buffer);
  }
}

void ServerStandIn::tell_caller_data(Session& session, int line, std::string text) {
  ServerPacket packet = server_packet(ServerCommand::SrvCallerData);
  packet.LineNo = static_cast<std::uint8_t>(line);
  packet.set_buffer(std::move(text));
  send(session, std::move(packet));
}

void ServerStandIn::send(Session& session, ServerPacket packet) {
  pad(packet.Buffer);
  session.connection->send(framed(body_of(packet)));
}

}  // namespace lineweir::simulation
