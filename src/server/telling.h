#pragma once

#include <string>

#include "wire/sent_frame.h"

namespace lineweir::server {

// Something that seats are told: the packet, and the frame that it makes, made once for all.
struct Telling {
  explicit Telling(const ServerPacket& told) : packet(told), frame(sent_frame(told)) {}

  ServerPacket packet;
  std::string frame;
};

}  // namespace lineweir::server
