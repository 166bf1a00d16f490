#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lineweir::serverd {

// Where to listen: an address by its number, version 4 or 6 in its usual form, and a port, of which
// 0 takes a free one.
struct SocketAddress {
  std::string address;
  std::uint16_t port = 0;

  bool is_loopback() const;
  // "127.0.0.1:2001", "[::1]:2001".
  std::string text() const;

  friend bool operator==(const SocketAddress&, const SocketAddress&) = default;
};

// "localhost" is 127.0.0.1. Nothing where the text is no address with a port.
std::optional<SocketAddress> read_socket_address(std::string_view text);

// An address by its number in its usual form; nothing where it is none.
std::optional<std::string> usual_address(const std::string& text);

}  // namespace lineweir::serverd
