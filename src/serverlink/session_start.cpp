#include "serverlink/session_start.h"

#include "serverlink/group_leave.h"
#include "serverlink/server_link.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/window_caption.h"

namespace lineweir {
namespace {

void send(ConsoleState& state, ServerLink& server, const ServerPacket& packet) {
  server.send(packet);
  state.services.loop.run_pending();
}

void request(ConsoleState& state, ServerLink& server, ClientCommand command) {
  send(state, server, server.packet(command));
}

// What another server's seats have said is not this one's; it sends a conversation only where it
// has one.
void leave_former_server(ConsoleState& state) {
  LoginState& login = state.login;
  const std::string server = login.ServerHost + ":" + std::to_string(login.ServerPort);
  if (!login.SessionServer.empty() && login.SessionServer != server) clear_conversation(state);
  login.SessionServer = server;
}

void tell_mode(ConsoleState& state, ServerLink& server) {
  ServerPacket packet = server.packet(ClientCommand::CmdSetMode);
  packet.AltInfo = state.Lineweir.ScreenerMode.checked ? 1 : 0;
  send(state, server, packet);
}

}  // namespace

void TextWrit_SockConnecter(ConsoleState& state, ServerLink& server, SessionReason RestartWinsock) {
  guard(state.trace, "TextWrit_SockConnecter", [&] {
    using enum ClientCommand;
    MainForm& form = state.Lineweir;
    check_present_group(state);
    form.SyncTimeTimer.enabled = false;
    form.Shape1.fill_color = color_red;
    state.login.ServerAlive = false;
    state.login.MissedPolls = 0;
    state.login.SessionBegun = true;
    state.login.BetweenGroups = false;
    state.messages.withdraw_offer();
    leave_former_server(state);

    request(state, server, CmdConnectConsole);
    state.services.loop.run_pending();
    if (RestartWinsock != SessionReason::GroupChange || state.login.GroupNamesWanted) {
      request(state, server, CmdRequestGroupNames);
      state.login.GroupNamesWanted = false;
    }
    request(state, server, CmdRequestStudioStatus);
    request(state, server, CmdRequestTimes);
    state.lines.FreshConnect = true;
    request(state, server, CmdRequestStatus);
    request(state, server, CmdRequestLineNumbers);
    tell_mode(state, server);

    renew_window_caption(state);
    form.Timer1.enabled = true;
    form.mouse_pointer = pointer_default;
    if (state.WinsockOptions.loaded()) state.WinsockOptions.unload();
  });
}

}  // namespace lineweir
