#include "wire/sent_frame.h"

#include "wire/server_packet_framing.h"

namespace lineweir {
namespace {

constexpr std::size_t longest_buffer = 32767;
constexpr char ending_byte = end_marker.front();

}  // namespace

std::string carried_buffer(std::string_view buffer) {
  // One byte is left for the blank behind the last.
  std::string carried(buffer.substr(0, longest_buffer - 1));
  for (std::size_t i = 1; i < carried.size(); ++i) {
    if (carried[i] == ending_byte && carried[i - 1] == ending_byte) carried[i] = ' ';
  }
  const bool padded = carried.size() % 2 != 0;
  if (!padded && carried.ends_with(ending_byte)) carried.back() = ' ';
  if (!padded && carried.ends_with(pad_byte)) carried += ' ';
  // The length that stands in front of the buffer ends in the same byte.
  const bool length_ends_so = (carried.size() & 0xFFU) == static_cast<unsigned char>(ending_byte);
  if (length_ends_so && carried.starts_with(ending_byte)) carried.front() = ' ';
  return carried;
}

std::string sent_frame(ServerPacket packet) {
  packet.set_buffer(carried_buffer(packet.Buffer));
  pad(packet.Buffer);
  return framed(body_of(packet));
}

ServerPacket server_packet(ServerCommand command, int group, std::string buffer) {
  ServerPacket packet;
  packet.CMD = static_cast<std::uint8_t>(command);
  packet.GroupNo = field_byte(group);
  packet.LineNo = packet.AltInfo = packet.Console = packet.Bank = no_value;
  packet.Buffer = std::move(buffer);
  return packet;
}

}  // namespace lineweir
