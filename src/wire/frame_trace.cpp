#include "wire/frame_trace.h"

namespace lineweir {
namespace {

std::vector<std::string> lines(std::string_view indent, std::string_view whole,
                               const ServerPacket& packet) {
  std::vector<std::string> result;
  const auto add = [&](std::string_view title, std::string_view text) {
    result.push_back(std::string(indent).append(title).append(text));
  };
  add("", whole);
  add("CMD ", std::to_string(packet.CMD));
  add("LineNo ", std::to_string(packet.LineNo));
  add("GroupNo ", std::to_string(packet.GroupNo));
  add("AltInfo ", std::to_string(packet.AltInfo));
  add("Console ", std::to_string(packet.Console));
  add("Bank ", std::to_string(packet.Bank));
  add("Size ", std::to_string(packet.Size[0]) + " " + std::to_string(packet.Size[1]));
  add("Buffer ", packet.Buffer);
  result.emplace_back();
  return result;
}

// The scrambled password of a login. Its first character tells how to undo the rest.
std::string password_in(const ServerPacket& packet) {
  using enum ClientCommand;
  for (const ClientCommand login :
       {CmdPasswordLogin, CmdLoginCheck, CmdRequestAccessRights, CmdRequestFirstUnblocked}) {
    if (packet.CMD != static_cast<std::uint8_t>(login)) continue;
    const std::size_t size = packet.Size[0] * std::size_t{256} + packet.Size[1];
    const std::string buffer = packet.Buffer.substr(0, size);
    const std::size_t name_end = buffer.find(item_end);
    return name_end == std::string::npos ? std::string() : buffer.substr(name_end + 1);
  }
  return {};
}

std::string without(std::string_view text, const std::string& password) {
  std::string shown(text);
  const std::size_t place = shown.rfind(item_end + password);
  if (place == std::string::npos) return shown;
  // Its key is no character of it.
  const std::string length = "(" + std::to_string(password.size() - 1) + " characters)";
  return shown.replace(place + 1, password.size(), length);
}

}  // namespace

std::vector<std::string> frame_trace(std::string_view whole, const ServerPacket& packet) {
  const std::string password = password_in(packet);
  if (password.empty()) return lines("", whole, packet);
  ServerPacket shown = packet;
  shown.Buffer = without(packet.Buffer, password);
  return lines("", without(whole, password), shown);
}

std::vector<std::string> received_frame_trace(std::string_view body, const ServerPacket& packet) {
  return lines("\t\t\t", body, packet);
}

}  // namespace lineweir
