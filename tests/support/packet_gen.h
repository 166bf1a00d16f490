#pragma once

#include <rapidcheck.h>

#include <string>
#include <vector>

#include "wire/server_packet_codec.h"

namespace lineweir::test {

// Any bytes, with those that mean something in a frame often enough to meet one another.
inline rc::Gen<std::string> frame_garbage() {
  return rc::gen::container<std::string>(
      rc::gen::weightedOneOf<char>({{4, rc::gen::just('\5')},
                                    {3, rc::gen::just('\4')},
                                    {1, rc::gen::just('\xFF')},
                                    {1, rc::gen::just('\0')},
                                    {3, rc::gen::arbitrary<char>()}}));
}

// Text that can stand in a field: no separators, no markers, and no 255, which at a buffer's end is
// taken for the pad.
inline rc::Gen<std::string> field_text() {
  return rc::gen::container<std::string>(
      rc::gen::map(rc::gen::inRange(32, 255), [](int code) { return static_cast<char>(code); }));
}

// A packet that arrives as it was sent: any header, and a buffer without markers.
inline rc::Gen<ServerPacket> sound_packet() {
  const auto field = rc::gen::weightedOneOf<std::uint8_t>(
      {{1, rc::gen::element<std::uint8_t>(4, 5, 255)}, {3, rc::gen::arbitrary<std::uint8_t>()}});
  return rc::gen::apply(
      [](const std::vector<std::uint8_t>& fields, std::string text) {
        ServerPacket packet;
        packet.CMD = fields[0];
        packet.LineNo = fields[1];
        packet.GroupNo = fields[2];
        packet.AltInfo = fields[3];
        packet.Console = fields[4];
        packet.Bank = fields[5];
        packet.set_buffer(std::move(text));
        return packet;
      },
      rc::gen::container<std::vector<std::uint8_t>>(6, field), field_text());
}

// A stream in pieces, cut at random places; some pieces may be empty.
inline std::vector<std::string> pieces_of(const std::string& stream,
                                          const std::vector<std::uint8_t>& lengths) {
  std::vector<std::string> pieces;
  std::size_t begin = 0;
  for (const std::size_t length : lengths) {
    pieces.push_back(stream.substr(begin, length % 16));
    begin += pieces.back().size();
  }
  pieces.push_back(stream.substr(begin));
  return pieces;
}

}  // namespace lineweir::test
