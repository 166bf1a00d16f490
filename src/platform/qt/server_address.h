#pragma once

#include <string>
#include <string_view>

namespace lineweir::platform {

// Where a server is and how it is reached: "tls:studio.example" by TLS, "studio.example" in plain
// text.
struct ServerAddress {
  std::string host;
  bool secured = false;
};

ServerAddress server_address(std::string_view text);

}  // namespace lineweir::platform
