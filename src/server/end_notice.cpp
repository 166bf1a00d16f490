#include "server/end_notice.h"

#include <algorithm>

namespace lineweir::server {
namespace {

constexpr int longest_notice = 60;
// Consoles leave a server five seconds ahead of the end that they are told; one more is for the
// way.
constexpr int left_ahead = 6;

}  // namespace

platform::Milliseconds EndNotice::notice_at() const {
  return ends_at_ - std::chrono::seconds(longest_notice - seconds_more());
}

ServerPacket EndNotice::packet(const Context& context) const {
  const platform::Milliseconds now = context.loop.now();
  const std::string text = context.letters.from_utf8(text_);
  if (now < notice_at()) return server_packet(ServerCommand::SrvMessage, no_value, text);
  ServerPacket notice = server_packet(ServerCommand::SrvShutdownNotice, no_value, text);
  const auto left = std::chrono::duration_cast<std::chrono::seconds>(ends_at_ - now).count();
  notice.AltInfo = field_byte(std::max(static_cast<int>(left), 0) + seconds_more());
  return notice;
}

// A server that follows this one serves from its end on.
int EndNotice::seconds_more() const { return is_followed_ ? left_ahead : 0; }

}  // namespace lineweir::server
