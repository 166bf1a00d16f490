#include "platform/scripted/scripted_client_socket.h"

#include <utility>

#include "base/failure.h"
#include "platform/scripted/scripted_serial_port.h"

namespace lineweir::platform {
namespace {

constexpr std::string_view frame_start = "\x04\x04";
constexpr std::size_t command_offset = 2;

}  // namespace

void ScriptedClientSocket::connect(const std::string& host, int port) {
  if (state_ != socket_closed) {
    throw Failure(failure_number::socket_wrong_state, "The socket is already in use");
  }
  host_ = host;
  port_ = port;
  connects_.push_back(host + ":" + std::to_string(port));
  received_.clear();
  refusal_.clear();
  state_ = socket_connecting;
  loop_.schedule(scripted_answer_time, [this, connection = ++connection_] {
    if (connection == connection_ && state_ == socket_connecting) answer_connection();
  });
}

ScriptedClientSocket::Server ScriptedClientSocket::server_at(const std::string& host) const {
  const auto known = servers_.find(host);
  if (known != servers_.end()) return known->second;
  return accepts_ && !refusals_.contains(host) ? Server::Accepts : Server::Refuses;
}

void ScriptedClientSocket::answer_connection() {
  const Server server = server_at(host_);
  if (server == Server::Silent) return;
  if (server != Server::Refuses) {
    state_ = socket_connected;
    return on_connect();
  }
  state_ = socket_closed;
  const auto known = refusals_.find(host_);
  refusal_ = known == refusals_.end() ? why_not_ : known->second.why;
  refusal_asked_ = known == refusals_.end() ? asked_ : known->second.asked;
}

void ScriptedClientSocket::close() {
  state_ = socket_closed;
  received_.clear();
}

std::string ScriptedClientSocket::get_data() { return std::exchange(received_, {}); }

void ScriptedClientSocket::send_data(std::string_view bytes) {
  if (state_ != socket_connected) {
    throw Failure(failure_number::socket_wrong_state, "The socket is not connected");
  }
  writes_.emplace_back(bytes);
  const Server server = server_at(host_);
  if (server == Server::HangsUp) drop();
  if (server == Server::HangsUp || server == Server::Mute) return;
  if (bytes.size() <= command_offset || !bytes.starts_with(frame_start)) return;
  const auto answer = replies_.find(static_cast<unsigned char>(bytes[command_offset]));
  if (answer != replies_.end()) arrive(answer->second, scripted_answer_time);
}

void ScriptedClientSocket::reply(int command, const std::string& answer) {
  replies_[command] = answer;
}

void ScriptedClientSocket::stand_connected() {
  ++connection_;
  state_ = socket_connected;
}

std::vector<std::string> ScriptedClientSocket::take_connects() {
  return std::exchange(connects_, {});
}

std::vector<std::string> ScriptedClientSocket::take_writes() { return std::exchange(writes_, {}); }

void ScriptedClientSocket::restart() {
  on_connect.forget_handler();
  on_data_arrival.forget_handler();
  close();
}

void ScriptedClientSocket::arrive(const std::string& bytes, Milliseconds delay) {
  if (bytes.empty() || state_ != socket_connected) return;
  loop_.schedule(delay, [this, bytes, connection = connection_] {
    if (connection != connection_ || state_ != socket_connected) return;
    received_ += bytes;
    on_data_arrival();
  });
}

}  // namespace lineweir::platform
