#pragma once

#include <string>

#include "server/context.h"
#include "wire/server_packet_codec.h"

namespace lineweir::server {

// The end of a server, as its seats are told of it. Consoles leave a minute behind the notice at
// the latest, so the last minute alone has one; ahead of it the text is told as a message.
class EndNotice {
 public:
  // The text is UTF-8. Where another server follows, nobody is to leave ahead of the end.
  EndNotice(platform::Milliseconds ends_at, const std::string& text, bool is_followed)
      : ends_at_(ends_at), text_(text), is_followed_(is_followed) {}

  platform::Milliseconds ends_at() const { return ends_at_; }
  // When consoles are to be told of it by a notice; what is told before is a message.
  platform::Milliseconds notice_at() const;
  // What is told now.
  ServerPacket packet(const Context& context) const;

 private:
  int seconds_more() const;

  platform::Milliseconds ends_at_;
  std::string text_;
  bool is_followed_;
};

}  // namespace lineweir::server
