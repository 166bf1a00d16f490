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

}  // namespace

std::vector<std::string> frame_trace(std::string_view whole, const ServerPacket& packet) {
  return lines("", whole, packet);
}

std::vector<std::string> received_frame_trace(std::string_view body, const ServerPacket& packet) {
  return lines("\t\t\t", body, packet);
}

}  // namespace lineweir
