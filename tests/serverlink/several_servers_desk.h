#pragma once

#include <string>
#include <vector>

#include "support/scripted_console.h"
#include "support/server_packet.h"

namespace lineweir::test {

// A console that knows several servers. Each lets everybody in, tells of a studio with free lines
// and beats, as far as the scripted socket lets it.
struct SeveralServersDesk : ScriptedConsole {
  using Server = platform::ScriptedClientSocket::Server;
  using Milliseconds = platform::Milliseconds;
  using Texts = std::vector<std::string>;

  explicit SeveralServersDesk(const std::string& address = "one, two") : ScriptedConsole("") {
    platform.winsock1.accept_connections(true);
    platform.dialogs.on_message = [this](const std::string& text) { told.push_back(text); };
    console.login.UserName = "Ann";
    console.login.UserPassword = "secret";
    let_in();
    beat();
    open_dialog(address);
    take_messages();
  }

  void set(const std::string& host, Server server) { platform.winsock1.set_server(host, server); }
  Texts take_connects() { return platform.winsock1.take_connects(); }
  MainForm& form() { return console.Lineweir; }

  void open_dialog(const std::string& address) {
    form().WinsockMenu.on_click();
    console.WinsockOptions.Text1.text = address;
    console.WinsockOptions.Text2.text = "2001";
  }
  void connect() { console.WinsockOptions.SockConnect.on_click(); }
  // Connects, and works long enough for the heartbeat to be known.
  void stand() {
    connect();
    pass(Milliseconds(5000));
    take_connects();
  }

  void pass(Milliseconds span) { platform.loop.advance(span); }
  bool is_in() {
    const bool connected = platform.winsock1.state() == platform::socket_connected;
    return connected && console.login.SessionBegun && form().no_link.get().empty();
  }
  bool is_lost() { return form().ServerSilence.visible; }
  // How long the console takes to be in a session with that server again.
  Milliseconds until_in_at(const std::string& host) {
    const Milliseconds began = platform.loop.now();
    while (!(is_in() && !is_lost() && platform.winsock1.host() == host)) {
      pass(Milliseconds(10));
      if (platform.loop.now() - began > Milliseconds(60'000)) break;
    }
    return platform.loop.now() - began;
  }
  // That server dies, and its connections with it.
  void kill(const std::string& host) {
    set(host, Server::Refuses);
    if (platform.winsock1.host() == host) platform.winsock1.drop();
  }

  static std::string frame(ServerCommand command, std::string text, std::uint8_t alt_info) {
    ServerPacket packet = server_packet(command, std::move(text));
    packet.AltInfo = alt_info;
    return frame_of(std::move(packet));
  }
  void reply(ClientCommand command, ServerCommand answer, std::string text,
             std::uint8_t alt_info = no_value) {
    platform.winsock1.reply(static_cast<int>(command), frame(answer, std::move(text), alt_info));
  }

  // What has been told in boxes that wait for the user.
  Texts told;

 private:
  void let_in() {
    reply(ClientCommand::CmdPasswordLogin, ServerCommand::SrvPasswordResult,
          std::string(all_rights), 'T');
    reply(ClientCommand::CmdLoginCheck, ServerCommand::SrvLoginCheckResult, std::string(all_rights),
          'F');
    reply(ClientCommand::CmdTimeRequest, ServerCommand::SrvTime, time_text);
    reply(ClientCommand::CmdRequestStatus, ServerCommand::SrvFullStatus,
          "F00F01F02F03F04F05F06F07F08F09");
    reply(ClientCommand::CmdRequestStudioStatus, ServerCommand::SrvStudioStatus,
          "True\3True\3True\3True\0031\0032\0033\0034\0035\0036\0037\0038\0039\00310\3");
    reply(ClientCommand::CmdRequestTimes, ServerCommand::SrvTimes,
          "\3\3\3\3\3\3\3\3\3\0030:00:00\3");
    reply(ClientCommand::CmdRequestLineNumbers, ServerCommand::SrvLineNumbers,
          std::string(100, ' '));
  }

  void beat() {
    platform.loop.schedule(Milliseconds(1000), [this] {
      if (beats && console.login.SessionBegun && console.login.ServerAlive) {
        platform.winsock1.arrive(frame(ServerCommand::SrvTime, time_text, no_value));
      }
      beat();
    });
  }

  static constexpr const char* time_text = "1/5/2026 10:00:00 AM";

 public:
  bool beats = true;
};

}  // namespace lineweir::test
