#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "wire/server_packet_codec.h"
#include "wire/server_packet_framing.h"

namespace lineweir::test {

// The rights of a user who may do everything.
inline constexpr std::string_view all_rights = "\xff\xff\xff\xff\xff\xff\xcf\xff\xff\xff\xff?";

// What a server sends to group 1, with nothing said yet but the command.
inline ServerPacket server_packet(ServerCommand command, std::string text = {}) {
  ServerPacket packet;
  packet.CMD = static_cast<std::uint8_t>(command);
  packet.LineNo = no_value;
  packet.GroupNo = 1;
  packet.AltInfo = no_value;
  packet.Console = no_value;
  packet.Bank = no_value;
  packet.set_buffer(std::move(text));
  return packet;
}

// The bytes of a packet as they go over the wire.
inline std::string frame_of(ServerPacket packet) {
  pad(packet.Buffer);
  return framed(body_of(packet));
}

}  // namespace lineweir::test
