#include "serverlink/session_start.h"

#include "core/console.h"
#include "core/guard.h"
#include "core/window_caption.h"

namespace lineweir {
namespace {

void send(Console& console, const ServerPacket& packet) {
  console.server.send(packet);
  console.services.loop.run_pending();
}

void request(Console& console, ClientCommand command) {
  send(console, console.server.packet(command));
}

void tell_mode(Console& console) {
  ServerPacket packet = console.server.packet(ClientCommand::CmdSetMode);
  packet.AltInfo = console.Lineweir.ScreenerMode.checked ? 1 : 0;
  send(console, packet);
}

}  // namespace

void TextWrit_SockConnecter(Console& console, SessionReason RestartWinsock) {
  guard(console, "TextWrit_SockConnecter", [&] {
    using enum ClientCommand;
    MainForm& form = console.Lineweir;
    check_present_group(console);
    form.SyncTimeTimer.enabled = false;
    form.Shape1.fill_color = color_red;
    console.login.ServerAlive = false;

    request(console, CmdConnectConsole);
    console.services.loop.run_pending();
    if (RestartWinsock != SessionReason::GroupChange) request(console, CmdRequestGroupNames);
    request(console, CmdRequestStudioStatus);
    request(console, CmdRequestTimes);
    console.lines.FreshConnect = true;
    request(console, CmdRequestStatus);
    request(console, CmdRequestLineNumbers);
    tell_mode(console);

    renew_window_caption(console);
    form.Timer1.enabled = true;
    form.mouse_pointer = pointer_default;
  });
}

}  // namespace lineweir
