#include "serverlink/group_elsewhere.h"

#include "base/names.h"
#include "serverlink/access_rights.h"
#include "serverlink/login_exchange.h"
#include "serverlink/server_alive.h"
#include "serverlink/server_connection.h"
#include "serverlink/server_link.h"
#include "serverlink/server_watch.h"
#include "serverlink/session_start.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/hourglass.h"
#include "state/window_caption.h"
#include "wire/group_elsewhere.h"

namespace lineweir {
namespace {

constexpr auto elsewhere_handler = "GroupElsewhere";
constexpr std::string_view secured_prefix = "tls:";

bool is_secured(const StudioServer& server) {
  return same_name(std::string_view(server.host).substr(0, secured_prefix.size()), secured_prefix);
}

}  // namespace

GroupElsewhere::GroupElsewhere(ConsoleState& state, ServerLink& server,
                               ServerConnection& connection, LoginExchange& exchange,
                               AccessRights& rights, ServerWatch& watch)
    : state_(state),
      server_(server),
      connection_(connection),
      exchange_(exchange),
      rights_(rights),
      watch_(watch) {
  server.handle(ServerCommand::SrvGroupElsewhere,
                [this](const ServerPacket& packet) { SrvGroupElsewhere(packet); });
}

void GroupElsewhere::SrvGroupElsewhere(const ServerPacket& packet) {
  if (packet.Bank != group_elsewhere_mark) return;
  if (packet.GroupNo != state_.program.GroupNumber) return;
  const StudioServer place = studio_servers(packet.Buffer, state_.login.ServerPort).front();
  if (place.host.empty()) return;
  if (is_secured(connection_.present()) && !is_secured(place)) {
    return state_.messages.ShowMessage(name_of_group() + " is served at " + name_of(place) +
                                       ", which isn't reached by TLS. The console doesn't go "
                                       "there by itself.");
  }
  connection_.send_to(place);
  if (watch_.is_coming_back()) return watch_.come_back_elsewhere();
  // This session's handlers are still at work.
  state_.services.loop.schedule(platform::Milliseconds{0},
                                [this, place, alive = std::weak_ptr(alive_)] {
                                  if (!alive.lock()) return;
                                  guard(state_.trace, elsewhere_handler, [&] { go_there(place); });
                                });
}

void GroupElsewhere::go_there(const StudioServer& place) {
  Label& banner = state_.Lineweir.ServerSilence;
  banner.caption = name_of_group() + " is served at " + name_of(place) + ", connecting there";
  banner.visible = true;
  const ServerConnection::Turn turn(connection_);
  const Hourglass hourglass(state_.Lineweir);
  connection_.begin_there();
  const LoginResult result = log_in();
  if (result != LoginResult::Superseded) banner.visible = false;
  switch (result) {
    case LoginResult::Accepted:
      connection_.let_in();
      // Who has changed the studio at this console keeps what is chosen here.
      if (state_.login.GroupLeft != 0) state_.Lineweir.UserProfileTimer.enabled = false;
      TextWrit_SockConnecter(state_, server_, SessionReason::Login);
      return watch_.expect_heartbeat();
    case LoginResult::Rejected:
      return state_.LoginForm.show();
    case LoginResult::NoServer:
    case LoginResult::NoAnswer:
      return come_back(place);
    case LoginResult::Superseded:
      return;
  }
}

LoginResult GroupElsewhere::log_in() {
  switch (connection_.await()) {
    case ServerConnection::Outcome::Stands:
      return exchange_.TextWrit_PasswordA(false);
    case ServerConnection::Outcome::Failed:
      return LoginResult::NoServer;
    case ServerConnection::Outcome::Superseded:
      break;
  }
  return LoginResult::Superseded;
}

void GroupElsewhere::come_back(const StudioServer& place) {
  // Another window asks about it.
  const bool is_asked = connection_.failure_is_asked();
  const std::string why =
      name_of_group() + " is served at " + name_of(place) + ", which isn't there now.";
  const int group = state_.login.GroupLeft;
  if (group != 0) {
    state_.program.GroupNumber = group;
    check_present_group(state_);
    renew_window_caption(state_);
  }
  connection_.begin_back();
  const LoginResult result = log_in();
  if (result == LoginResult::Superseded) return;
  if (result != LoginResult::Accepted) {
    watch_.come_back_later();
    return state_.messages.ShowMessage(why);
  }
  connection_.let_in();
  if (group == 0) {
    rights_.RequestFirstUnblocked();
    return state_.messages.ShowMessage(why);
  }
  state_.Lineweir.UserProfileTimer.enabled = false;
  TextWrit_SockConnecter(state_, server_, SessionReason::Login);
  watch_.expect_heartbeat();
  if (is_asked) return;
  state_.messages.ShowMessage(why + " The console is back in " + name_of_group() + ".");
}

std::string GroupElsewhere::name_of_group() const {
  const ComboBox& names = state_.DisplayOptionForm.MessageGroupSelector;
  const int group = state_.program.GroupNumber;
  const bool has_name = group >= 1 && group <= names.list_count();
  return has_name ? names.list.get()[static_cast<std::size_t>(group - 1)]
                  : "Studio group " + std::to_string(group);
}

}  // namespace lineweir
