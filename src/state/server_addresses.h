#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir {

// A studio's server as the user names it: the host with "tls:" in front where it is reached so.
struct StudioServer {
  std::string host;
  int port = 0;

  bool operator==(const StudioServer&) const = default;
};

inline constexpr std::size_t most_servers = 10;
inline constexpr std::size_t longest_server_host = 255;
inline constexpr int highest_port = 65535;

// A port's number; a text that is none is a Failure of number 13, one outside 1 to 65535 of number
// 5.
int port_number(std::string_view text);

// The servers of an address as it is typed, in their order and each once: "one, tls:two:2002". A
// port behind the host is that server's own, `port` is that of all others; an IPv6 address with a
// port stands in brackets. There is always at least one, with an empty host where none is named. An
// address that can't be is a Failure of number 5 with a sentence for the user.
std::vector<StudioServer> studio_servers(std::string_view address, int port);

// The same for an address that has been taken long ago: one that can't be is a single host.
std::vector<StudioServer> known_studio_servers(std::string_view address, int port);

// "studio.example, port 2001".
std::string name_of(const StudioServer& server);

}  // namespace lineweir
