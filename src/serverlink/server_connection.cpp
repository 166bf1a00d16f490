#include "serverlink/server_connection.h"

#include "serverlink/line_events.h"
#include "serverlink/server_link.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr platform::Milliseconds connection_limit{5000};

}  // namespace

ServerConnection::ServerConnection(ConsoleState& state, ServerLink& server, LineEvents& line_events)
    : state_(state), server_(server), line_events_(line_events) {
  wire(state.services.winsock1.on_connect, state_.trace, "Lineweir_Winsock1_Connect",
       [this] { Winsock1_Connect(); });
}

void ServerConnection::close() {
  wanted_ = false;
  if (state_.services.winsock1.state() != platform::socket_closed) {
    state_.services.winsock1.close();
  }
}

void ServerConnection::expect_free_lines() {
  line_events_.TheStatusText = status_text_of_free_lines;
}

void ServerConnection::begin() {
  close();
  wanted_ = true;
  begun_in_hand_ = in_hand();
  ++attempts_;
  state_.login.SessionBegun = false;
  state_.login.BetweenGroups = false;
  state_.login.GroupNamesWanted = true;
  // The group that was chosen by hand was another login's.
  state_.login.SkipProfile = false;
  expect_free_lines();
  server_.expect_new_stream();
  if (on_begin) on_begin();
  state_.services.winsock1.connect(state_.login.ServerHost, state_.login.ServerPort);
}

ServerConnection::Outcome ServerConnection::await() {
  platform::EventLoop& loop = state_.services.loop;
  const auto start = loop.now();
  const int attempt = attempts_;
  while (state_.services.winsock1.state() != platform::socket_connected) {
    const bool refused = !state_.services.winsock1.refusal().empty();
    if (refused || loop.now() - start > connection_limit) {
      // One that comes later would stand without a login.
      state_.services.winsock1.close();
      return Outcome::Failed;
    }
    loop.yield();
    if (attempts_ != attempt || !state_.Lineweir.loaded()) return Outcome::Superseded;
  }
  // The former session's polls would keep the lamp green where this one never begins.
  state_.Lineweir.SyncTimeTimer.enabled = false;
  return Outcome::Stands;
}

std::string ServerConnection::failure() const {
  const std::string refusal = state_.services.winsock1.refusal();
  return refusal.empty() ? std::string(no_server_message) : refusal;
}

bool ServerConnection::failure_is_asked() const {
  return begun_in_hand_ && state_.services.winsock1.refusal_is_asked();
}

void ServerConnection::Winsock1_Connect() { state_.Lineweir.WinsockMenu.checked = true; }

}  // namespace lineweir
