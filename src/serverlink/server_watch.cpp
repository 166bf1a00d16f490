#include "serverlink/server_watch.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "base/time_text.h"
#include "link/link_watch.h"
#include "link/links.h"
#include "serverlink/login_exchange.h"
#include "serverlink/server_alive.h"
#include "serverlink/server_connection.h"
#include "serverlink/server_link.h"
#include "serverlink/session_start.h"
#include "serverlink/socket_link.h"
#include "state/console_state.h"
#include "state/guard.h"

namespace lineweir {
namespace {

using platform::Milliseconds;

constexpr auto server_watch_handler = "ServerWatch";
constexpr Milliseconds between_looks{50};
constexpr int tries_until_a_patient_one = 3;

template <class Words>
std::string joined_servers(const std::vector<StudioServer>& servers, std::string_view between,
                           const Words& words) {
  std::string text;
  for (std::size_t i = 0; i < servers.size(); ++i) {
    if (i > 0) text += i + 1 == servers.size() ? " and " : between;
    text += words(servers[i]);
  }
  return text;
}

}  // namespace

ServerWatch::ServerWatch(ConsoleState& state, const Links& links, SocketLink& socket_link,
                         ServerLink& server, ServerConnection& connection, LoginExchange& exchange,
                         LinkWatch& link)
    : state_(state),
      links_(links),
      socket_link_(socket_link),
      server_(server),
      connection_(connection),
      exchange_(exchange),
      link_(link) {
  server.on_frame = [this](const ServerPacket& packet) { hear(packet); };
  connection.on_begin = [this] {
    // Another server may keep no heartbeat; one that is lost has had one.
    heartbeat_ = {};
    end_is_missed_ = false;
    silence_is_missed_ = false;
    heart_is_known_ = step_ != Step::NotLost;
    // By hand other servers may be asked for.
    if (step_ != Step::NotLost) tell_silence();
    link_.review();
    missing_ = {ServerCommand::SrvFullStatus, ServerCommand::SrvStudioStatus,
                ServerCommand::SrvTimes, ServerCommand::SrvLineNumbers};
  };
}

ServerWatch::~ServerWatch() {
  if (next_look_) state_.services.loop.cancel(*next_look_);
}

void ServerWatch::hear(const ServerPacket& packet) {
  heard_at_ = state_.services.loop.now();
  if (step_ == Step::NotLost) heard_at_time_ = state_.services.clock.now();
  missing_.erase(static_cast<ServerCommand>(packet.CMD));
  if (!state_.Lineweir.no_link.get().empty()) link_.review();
  if (packet.CMD != static_cast<std::uint8_t>(ServerCommand::SrvTime)) return;
  if (std::exchange(state_.login.TimeAskedAtLogin, false)) return;
  // Servers that stand in for each other have a heartbeat. The polls begin with the state of the
  // lines: what comes before is no answer.
  const bool is_own = connection_.several() && missing_.contains(ServerCommand::SrvFullStatus);
  heartbeat_.beat(heard_at_, heart_is_known_ || is_own);
  if (!heartbeat_.steady() || next_look_) return;
  look_in(connection_.several() ? between_looks : longest_silence - between_looks);
}

void ServerWatch::look_in(Milliseconds delay) {
  next_look_ = state_.services.loop.schedule(delay, [this] {
    next_look_.reset();
    guard(state_.trace, server_watch_handler, [this] { look(); });
    if (step_ != Step::NotLost && !next_look_) look_in(between_looks);
  });
}

bool ServerWatch::watches() const {
  // By hand one connection is ended before the next one is asked for.
  const bool wanted = connection_.wanted() || connection_.in_hand();
  return state_.Lineweir.loaded() && wanted && links_.in_use().hears_heartbeat();
}

void ServerWatch::look() {
  if (step_ == Step::NotLost) return look_for_silence();
  if (!watches()) return end();
  come_back();
}

void ServerWatch::look_for_silence() {
  const bool is_steady = heartbeat_.steady();
  if ((!is_steady && !end_is_missed_) || !watches()) return;
  if (is_cut_off()) return lose();
  if (!is_steady && !silence_is_missed_) return look_in(between_looks);
  // After a time in which this program itself stood still, what has come meanwhile is heard before
  // the second look.
  const Milliseconds silence = state_.services.loop.now() - heard_at_;
  if (silence >= longest_silence) return lose();
  if (connection_.several()) return look_in(between_looks);
  const Milliseconds first_look = longest_silence - between_looks;
  look_in(silence < first_look ? first_look - silence : longest_silence - silence);
}

bool ServerWatch::is_cut_off() const {
  return connection_.several() && state_.services.winsock1.state() == platform::socket_closed;
}

void ServerWatch::lose() {
  tries_ = 0;
  tell_silence();
  link_.review();
  lose_server(state_);
  connect();
}

void ServerWatch::tell_silence() {
  const std::string sentence =
      "No word from the server since " + hms_text(seconds_of_day(heard_at_time_));
  Label& banner = state_.Lineweir.ServerSilence;
  socket_link_.silence = sentence + ".";
  banner.caption = sentence;
  if (connection_.several()) {
    const auto& servers = connection_.servers();
    socket_link_.silence +=
        " The console looks for " +
        joined_servers(servers, "; ", [](const StudioServer& server) { return name_of(server); }) +
        ".";
    banner.caption =
        sentence + ", trying " + joined_servers(servers, ", ", [&](const StudioServer& server) {
          const auto same = [&](const auto& other) { return other.host == server.host; };
          const bool is_alone = std::ranges::count_if(servers, same) == 1;
          return server.host + (is_alone ? "" : ":" + std::to_string(server.port));
        });
  }
  banner.visible = true;
}

void ServerWatch::come_back() {
  if (missing_.empty() && !state_.Lineweir.Timer4.enabled) return end();
  // The user connects by hand: what comes of it shows in the state that arrives, or doesn't.
  if (connection_.in_hand()) return go_to(Step::Registering);
  const bool connected = state_.services.winsock1.state() == platform::socket_connected;
  const Milliseconds now = state_.services.loop.now();
  switch (step_) {
    case Step::NotLost:
    case Step::Refused:
      return;
    case Step::BetweenTries:
      if (now - try_began_ >= (connection_.several() ? between_rounds : between_tries)) connect();
      return;
    case Step::Connecting:
      return connected ? log_in() : follow_connection();
    case Step::LoggingIn:
      return connected ? follow_answer() : give_up(server_hung_up);
    case Step::Registering:
      return connected ? follow_state() : give_up(server_hung_up);
  }
}

void ServerWatch::connect() {
  try_began_ = state_.services.loop.now();
  ++tries_;
  go_to(Step::Connecting);
  connection_.begin_return();
}

void ServerWatch::come_back_elsewhere() { wait_for_next_try(); }

void ServerWatch::expect_heartbeat() {
  heart_is_known_ = true;
  end_is_missed_ = true;
  silence_is_missed_ = true;
  if (!next_look_) look_in(between_looks);
}

void ServerWatch::come_back_later() {
  lose();
  if (!next_look_) look_in(between_looks);
}

void ServerWatch::follow_connection() {
  const Milliseconds now = state_.services.loop.now();
  if (!connection_.several()) {
    if (now - try_began_ >= between_tries) connect();
    return;
  }
  if (is_cut_off()) return give_up(server_unreachable);
  if (now - step_began_ >= present_patience()) give_up(server_silent);
}

Milliseconds ServerWatch::present_patience() const {
  return tries_ % tries_until_a_patient_one == 0 ? long_patience : patience;
}

void ServerWatch::give_up(std::string_view why) {
  if (!connection_.several()) return wait_for_next_try();
  // A time that it has told is no session.
  state_.login.ServerAlive = false;
  state_.Lineweir.Shape1.fill_color = color_red;
  go_to(connection_.begin_next(why) ? Step::Connecting : Step::BetweenTries);
}

void ServerWatch::log_in() {
  state_.Lineweir.SyncTimeTimer.enabled = false;
  go_to(Step::LoggingIn);
  exchange_.ask_for_password_login();
}

void ServerWatch::follow_answer() {
  switch (exchange_.password_answer()) {
    case LoginResult::Accepted:
      go_to(Step::Registering);
      connection_.let_in();
      keep_what_is_chosen_here();
      return TextWrit_SockConnecter(state_, server_, SessionReason::Login);
    case LoginResult::Rejected:
      go_to(Step::Refused);
      return state_.messages.ShowMessage(password_rejected_message);
    case LoginResult::NoAnswer:
    case LoginResult::Superseded:
    case LoginResult::NoServer:
      break;
  }
  const Milliseconds waited = state_.services.loop.now() - step_began_;
  const bool is_silent =
      connection_.several() && !exchange_.is_heard() && waited >= present_patience();
  if (is_silent || waited > LoginExchange::answer_limit) give_up(server_silent);
}

// The user hasn't left this console: a profile that was saved some time ago, with the studio of
// that time, is not what he wants now. Clocks that the server doesn't tell are another caller's by
// now.
void ServerWatch::keep_what_is_chosen_here() {
  state_.Lineweir.UserProfileTimer.enabled = false;
  for (int line = 0; line < state_.lines.LineCount; ++line) state_.lines.ClockBase(line).clear();
}

void ServerWatch::follow_state() {
  if (state_.services.loop.now() - step_began_ <= state_limit) return;
  // A server that tells of the lines alone is taken as it is.
  if (!missing_.contains(ServerCommand::SrvFullStatus)) return end();
  give_up(server_silent);
}

void ServerWatch::go_to(Step step) {
  step_ = step;
  step_began_ = state_.services.loop.now();
}

void ServerWatch::wait_for_next_try() { go_to(Step::BetweenTries); }

void ServerWatch::end() {
  // It may be lost again before it was heard.
  end_is_missed_ = std::exchange(step_, Step::NotLost) != Step::NotLost && connection_.several();
  if (end_is_missed_ && !next_look_) look_in(between_looks);
  socket_link_.silence.clear();
  state_.Lineweir.ServerSilence.visible = false;
  state_.messages.withdraw_offer();
  link_.review();
}

}  // namespace lineweir
