#pragma once

#include <array>
#include <cstdint>

#include "platform/event_loop.h"
#include "server/refusal.h"

namespace lineweir::server {

// What the server counts, from its start.
struct Figures {
  // By command code.
  std::array<std::uint64_t, 256> frames_in{};
  std::array<std::uint64_t, 256> frames_out{};
  std::array<std::uint64_t, refusal_names.size()> refusals{};
  std::uint64_t connections = 0;
  std::uint64_t logins = 0;
  std::uint64_t dropped_slow = 0;
  std::uint64_t dropped_silent = 0;
  std::uint64_t line_changes = 0;
  // How late the loop ran what was due each second: the last time, and at worst.
  platform::Milliseconds late{0};
  platform::Milliseconds worst_late{0};

  void refuse(Refusal refusal) { ++refusals[static_cast<std::size_t>(refusal)]; }
};

}  // namespace lineweir::server
