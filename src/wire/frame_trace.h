#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wire/server_packet_codec.h"

namespace lineweir {

// What the trace shows of a frame: the whole of it as it stands on the wire or was cut from it,
// then each field in decimal, the buffer and an empty line. In place of a password stands how many
// characters it has.
std::vector<std::string> frame_trace(std::string_view whole, const ServerPacket& packet);

// The same for a received frame: three tabs stand in front of each line.
std::vector<std::string> received_frame_trace(std::string_view body, const ServerPacket& packet);

}  // namespace lineweir
