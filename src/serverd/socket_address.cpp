#include "serverd/socket_address.h"

#include <arpa/inet.h>

#include <array>
#include <charconv>

namespace lineweir::serverd {

namespace {

std::optional<std::string> usual_address(int family, const std::string& text) {
  std::array<unsigned char, sizeof(in6_addr)> number{};
  std::array<char, INET6_ADDRSTRLEN> usual{};
  if (::inet_pton(family, text.c_str(), number.data()) != 1 ||
      ::inet_ntop(family, number.data(), usual.data(), usual.size()) == nullptr) {
    return std::nullopt;
  }
  return usual.data();
}

std::optional<std::uint16_t> read_port(std::string_view text) {
  std::uint16_t port = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return port;
}

// A text with a zero byte would end there for the system.
bool is_without_nul(std::string_view text) { return text.find('\0') == std::string_view::npos; }

}  // namespace

bool SocketAddress::is_loopback() const { return address == "::1" || address.starts_with("127."); }

std::string SocketAddress::text() const {
  const bool is_six = address.find(':') != std::string::npos;
  return (is_six ? "[" + address + "]" : address) + ":" + std::to_string(port);
}

std::optional<std::string> usual_address(const std::string& text) {
  if (!is_without_nul(text)) return std::nullopt;
  const auto four = usual_address(AF_INET, text);
  return four ? four : usual_address(AF_INET6, text);
}

std::optional<SocketAddress> read_socket_address(std::string_view text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string_view::npos || !is_without_nul(text)) return std::nullopt;
  const auto port = read_port(text.substr(colon + 1));
  const std::string host(text.substr(0, colon));
  std::optional<std::string> address;
  if (host == "localhost") {
    address = "127.0.0.1";
  } else if (host.size() > 2 && host.front() == '[' && host.back() == ']') {
    address = usual_address(AF_INET6, host.substr(1, host.size() - 2));
  } else {
    address = usual_address(AF_INET, host);
  }
  if (!port || !address) return std::nullopt;
  return SocketAddress{*address, *port};
}

}  // namespace lineweir::serverd
