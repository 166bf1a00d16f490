#include "support/session_steps.h"

#include "support/server_packet.h"

namespace lineweir::test {
namespace {

constexpr std::uint8_t first_command = 126;
constexpr int commands = 21;

ServerPacket answer(ServerCommand command, char mark) {
  ServerPacket packet = server_packet(command, std::string(all_rights));
  packet.AltInfo = static_cast<std::uint8_t>(mark);
  return packet;
}

}  // namespace

void SessionSteps::play(std::span<const std::uint8_t> bytes) {
  bytes_ = bytes;
  platform::ScriptedClientSocket& socket = desk_.platform.winsock1;
  socket.accept_connections(true);
  socket.reply(static_cast<std::uint8_t>(ClientCommand::CmdLoginCheck),
               frame_of(answer(ServerCommand::SrvLoginCheckResult, 'F')));
  socket.reply(static_cast<std::uint8_t>(ClientCommand::CmdPasswordLogin),
               frame_of(answer(ServerCommand::SrvPasswordResult, 'T')));
  connect();
  while (!bytes_.empty() && !desk_.platform.ended) take_step();
  desk_.platform.loop.advance(platform::Milliseconds(2000));
}

std::uint8_t SessionSteps::next() {
  if (bytes_.empty()) return 0;
  const std::uint8_t byte = bytes_.front();
  bytes_ = bytes_.subspan(1);
  return byte;
}

std::string SessionSteps::text(std::size_t length) {
  std::string result;
  while (result.size() < length && !bytes_.empty()) result += static_cast<char>(next());
  return result;
}

void SessionSteps::take_step() {
  const std::uint8_t step = next();
  if (step < 168) return send_frame(static_cast<std::uint8_t>(first_command + step % commands));
  switch (step % 8) {
    case 0:
      desk_.platform.winsock1.arrive(text(next()));
      return;
    case 1:
      return desk_.platform.winsock1.drop();
    case 2:
      return connect();
    case 3:
    case 4:
      return click();
    case 5:
      return desk_.platform.loop.advance(platform::Milliseconds(10'000));
    default:
      return desk_.platform.loop.advance(platform::Milliseconds(next()));
  }
}

void SessionSteps::send_frame(std::uint8_t command) {
  ServerPacket packet;
  packet.CMD = command;
  packet.LineNo = next();
  packet.GroupNo = next();
  packet.AltInfo = next();
  packet.Console = next();
  packet.Bank = next();
  packet.set_buffer(text(next()));
  desk_.platform.winsock1.arrive(frame_of(packet));
  desk_.platform.loop.advance(platform::Milliseconds(60));
}

void SessionSteps::connect() {
  desk_.console.Lineweir.WinsockMenu.on_click();
  desk_.console.WinsockOptions.SockConnect.on_click();
}

void SessionSteps::click() {
  Console& console = desk_.console;
  switch (next() % 6) {
    case 0:
      if (console.MyMsgbox.ReconnectButton.visible) console.MyMsgbox.ReconnectButton.on_click();
      return;
    case 1:
      if (console.LoginForm.visible) console.LoginForm.ConnectButton.on_click();
      return;
    case 2:
      return console.Lineweir.DimLineNumMenu.on_click();
    case 3:
      return console.Lineweir.StudioLinNumMenu.on_click();
    case 4:
      return console.Lineweir.ScreenerMode.on_click();
    default:
      return console.Lineweir.StudioMode.on_click();
  }
}

}  // namespace lineweir::test
