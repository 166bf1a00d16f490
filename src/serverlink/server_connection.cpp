#include "serverlink/server_connection.h"

#include <algorithm>
#include <utility>

#include "base/time_text.h"
#include "serverlink/line_events.h"
#include "serverlink/server_link.h"
#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

using platform::Milliseconds;

constexpr Milliseconds connection_limit{5000};
constexpr Milliseconds smallest_share{1000};
// As long as another server takes to lead in its place; and at most, as a thousand consoles whose
// server is away mustn't ask the others all the time where it is.
constexpr Milliseconds sent_holds_first{4'000};
constexpr Milliseconds sent_holds_longest{30'000};
// A server is left five seconds ahead of its end.
constexpr Milliseconds told_end_takes{6000};

}  // namespace

ServerConnection::ServerConnection(ConsoleState& state, ServerLink& server, LineEvents& line_events)
    : state_(state), server_(server), line_events_(line_events) {
  wire(state.services.winsock1.on_connect, state_.trace, "Lineweir_Winsock1_Connect",
       [this] { Winsock1_Connect(); });
}

void ServerConnection::close() {
  wanted_ = false;
  state_.login.ServerNow.clear();
  if (state_.services.winsock1.state() != platform::socket_closed) {
    state_.services.winsock1.close();
  }
}

void ServerConnection::leave() {
  close();
  if (!several()) return;
  wanted_ = true;
  told_end_ = {round_.present(), state_.services.loop.now() + told_end_takes};
}

void ServerConnection::expect_free_lines() { line_events_.expect_free_lines(); }

std::vector<StudioServer> ServerConnection::known_servers() const {
  auto servers = known_studio_servers(state_.login.ServerHost, state_.login.ServerPort);
  if (sent_to_) {
    std::erase(servers, sent_to_->server);
    servers.insert(servers.begin(), sent_to_->server);
  }
  const bool is_known = !sent_by_ || std::ranges::count(servers, *sent_by_) > 0;
  if (!is_known) servers.push_back(*sent_by_);
  return servers;
}

bool ServerConnection::asks_there_alone() {
  if (!sent_to_) return false;
  const Milliseconds now = state_.services.loop.now();
  if (!sent_to_->until) sent_to_->until = now + sent_to_->holds;
  if (now >= *sent_to_->until) return false;
  // Of servers that stand in for each other the other one may have the studio by now.
  const auto own = known_studio_servers(state_.login.ServerHost, state_.login.ServerPort);
  return std::ranges::count(own, sent_to_->server) == 0;
}

void ServerConnection::send_to(const StudioServer& server) {
  const bool is_again = sent_to_ && sent_to_->server == server;
  if (!is_again && had_ != server) sent_by_ = had_;
  const Milliseconds holds =
      is_again ? std::min(2 * sent_to_->holds, sent_holds_longest) : sent_holds_first;
  sent_to_ = {server, holds};
  had_ = server;
}

void ServerConnection::let_in() {
  had_ = round_.present();
  if (sent_to_ && sent_to_->server == had_) sent_to_ = {had_, sent_holds_first};
}

void ServerConnection::begin_there() {
  servers_ = known_servers();
  begin_round({servers_.front()});
}

void ServerConnection::begin_back() {
  sent_to_.reset();
  servers_ = known_servers();
  auto servers = servers_;
  if (sent_by_) {
    std::erase(servers, *sent_by_);
    servers.insert(servers.begin(), *sent_by_);
    had_ = *sent_by_;
  }
  begin_round(std::move(servers));
}

void ServerConnection::begin() {
  sent_to_.reset();
  sent_by_.reset();
  state_.login.GroupLeft = 0;
  servers_ = known_servers();
  auto behind_asked = std::exchange(behind_asked_, {});
  begin_round(behind_asked.empty() ? servers_ : std::move(behind_asked));
}

void ServerConnection::begin_return() {
  servers_ = known_servers();
  if (asks_there_alone()) return begin_there();
  auto servers = servers_;
  const auto had = std::ranges::find(servers, had_);
  if (had != servers.end()) std::rotate(servers.begin(), had, servers.end());
  if (told_end_ && state_.services.loop.now() >= told_end_->until) told_end_.reset();
  if (told_end_ && servers.size() > 1) std::erase(servers, told_end_->server);
  begin_round(std::move(servers));
}

bool ServerConnection::begin_next(std::string_view why) {
  close();
  wanted_ = true;
  if (!round_.go_on(std::string(why))) return false;
  connect();
  return true;
}

void ServerConnection::begin_round(std::vector<StudioServer> servers) {
  round_ = ServerRound(std::move(servers));
  connect();
}

void ServerConnection::connect() {
  close();
  wanted_ = true;
  begun_in_hand_ = in_hand();
  ++attempts_;
  state_.login.SessionBegun = false;
  state_.login.BetweenGroups = false;
  state_.login.GroupNamesWanted = true;
  state_.login.TimeAskedAtLogin = false;
  // The group that was chosen by hand was another login's.
  state_.login.SkipProfile = false;
  // What a server has announced holds for the connection that it was told on.
  state_.Lineweir.ShutDownTimer.enabled = false;
  state_.Lineweir.timForceGroupChange.enabled = false;
  expect_free_lines();
  server_.expect_new_stream();
  if (on_begin) on_begin();
  state_.services.winsock1.connect(round_.present().host, round_.present().port);
}

Milliseconds ServerConnection::share() const {
  const auto servers = static_cast<Milliseconds::rep>(round_.size());
  return std::max(smallest_share, connection_limit / servers);
}

ServerConnection::Outcome ServerConnection::await() {
  const Outcome outcome = several() ? await_several() : await_one();
  // The former session's polls would keep the lamp green where this one never begins.
  if (outcome == Outcome::Stands) state_.Lineweir.SyncTimeTimer.enabled = false;
  return outcome;
}

ServerConnection::Outcome ServerConnection::await_next(std::string_view why) {
  return begin_next(why) ? await() : Outcome::Failed;
}

ServerConnection::Outcome ServerConnection::await_one() {
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
  return Outcome::Stands;
}

ServerConnection::Outcome ServerConnection::await_several() {
  platform::EventLoop& loop = state_.services.loop;
  // The banner of a lost server tells of all of them already.
  Label& banner = state_.Lineweir.ServerSilence;
  const bool tells = !banner.visible;
  const auto end = [&](Outcome outcome) {
    if (tells) banner.visible = false;
    return outcome;
  };
  for (;;) {
    if (tells) tell_trying();
    const auto start = loop.now();
    const int attempt = attempts_;
    std::optional<std::string> why;
    while (state_.services.winsock1.state() != platform::socket_connected &&
           !(why = why_go_on(loop.now() - start))) {
      loop.yield();
      if (attempts_ != attempt || !state_.Lineweir.loaded()) return end(Outcome::Superseded);
    }
    if (!why) return end(Outcome::Stands);
    if (failure_is_asked()) {
      asked_attempt_ = attempts_;
      return end(Outcome::Failed);
    }
    if (!begin_next(*why)) return end(Outcome::Failed);
  }
}

std::optional<std::string> ServerConnection::why_go_on(Milliseconds waited) const {
  const platform::ClientSocket& socket = state_.services.winsock1;
  const std::string refusal = socket.refusal();
  if (!refusal.empty()) return refusal;
  if (socket.state() == platform::socket_closed) return std::string(server_unreachable);
  if (waited > share()) return std::string(server_silent);
  return std::nullopt;
}

void ServerConnection::tell_trying() {
  Label& banner = state_.Lineweir.ServerSilence;
  banner.caption = "Trying " + name_of(round_.present()) + " (" + std::to_string(round_.place()) +
                   " of " + std::to_string(round_.size()) + ")";
  banner.visible = true;
}

std::string ServerConnection::failure() const {
  if (several()) return std::string(no_server_message) + "\n" + round_.failures();
  const std::string refusal = state_.services.winsock1.refusal();
  return refusal.empty() ? std::string(no_server_message) : refusal;
}

bool ServerConnection::failure_is_asked() const {
  return begun_in_hand_ && state_.services.winsock1.refusal_is_asked();
}

bool ServerConnection::pass_over_asked() {
  if (asked_attempt_ != attempts_ || round_.is_last()) return false;
  behind_asked_ = round_.rest();
  return true;
}

void ServerConnection::Winsock1_Connect() {
  state_.Lineweir.WinsockMenu.checked = true;
  if (!several()) return;
  const auto now = seconds_of_day(state_.services.clock.now());
  state_.login.ServerNow = name_of(round_.present()) + ", since " + hms_text(now);
}

}  // namespace lineweir
