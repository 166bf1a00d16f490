#include "server/remote_client.h"

#include "server/rights_templates.h"

namespace lineweir::server {
namespace {

// Lines count from 1 here, and 0 is none.
int line_number(const ServerPacket& packet) {
  return packet.LineNo == no_value ? 0 : packet.LineNo + 1;
}

}  // namespace

RemoteClient::RemoteClient(std::uint64_t seat_number, std::string caller_name, int group_number,
                           SeatBook& book, platform::RemoteService& service)
    : Seat(seat_number),
      caller(std::move(caller_name)),
      of_group(group_number),
      book_(book),
      service_(service) {
  user = "D-Bus " + caller;
  rights = rights_of(RightsTemplate::Engineer);
}

void RemoteClient::tell(const Telling& telling) {
  if (object.empty()) return;
  const ServerPacket& packet = telling.packet;
  const auto call = [&](const char* member, const platform::RemoteArguments& arguments) {
    service_.tell(caller, object, member, arguments);
  };
  switch (static_cast<ServerCommand>(packet.CMD)) {
    case ServerCommand::SrvFullStatus:
      return call("ReturnCommand", {packet.Buffer});
    case ServerCommand::SrvLineStatus:
      return call("ReturnCommand", {book_.find_group(of_group)->lines().status_text()});
    case ServerCommand::SrvCallerData:
      return call("ReturnCallerData", {packet.Buffer, line_number(packet), of_group});
    case ServerCommand::SrvNextCall:
      return call("ReturnNextCall", {line_number(packet), of_group});
    case ServerCommand::SrvFlashMessage:
      if (const auto message = decode_text_message(packet.Buffer)) {
        call("ReturnMessageData",
             {message->text, of_group, message->back_color, message->fore_color});
      }
      return;
    default:
      return;
  }
}

}  // namespace lineweir::server
