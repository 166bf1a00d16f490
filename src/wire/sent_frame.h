#pragma once

#include <string>
#include <string_view>

#include "wire/server_packet_codec.h"

namespace lineweir {

// The buffer with blanks in place of bytes that would end its frame, and with a blank behind a last
// byte that would be taken for the pad; cut to what a frame holds. One that a frame carries as it
// stands comes back unchanged.
std::string carried_buffer(std::string_view buffer);

// The frame as it goes out, with the buffer as carried_buffer() makes it. Whoever cuts frames by
// their markers gets exactly this buffer.
std::string sent_frame(ServerPacket packet);

// A server's packet whose fields carry nothing but the group, with this buffer.
ServerPacket server_packet(ServerCommand command, int group, std::string buffer = {});

}  // namespace lineweir
