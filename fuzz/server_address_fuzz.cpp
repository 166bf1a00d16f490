// Addresses as a user may type them or a server may send them. Each is taken or refused with a
// sentence; what is taken has a host and a port that can be connected to, and is understood again.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/failure.h"
#include "state/server_addresses.h"

namespace {

using namespace lineweir;

void require(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string address(reinterpret_cast<const char*>(data), size);
  require(!known_studio_servers(address, 2001).empty());
  try {
    const auto servers = studio_servers(address, 2001);
    require(!servers.empty() && servers.size() <= most_servers);
    for (const StudioServer& server : servers) {
      require(server.port > 0 && server.port <= highest_port);
      require(server.host.size() <= longest_server_host);
      require(!name_of(server).empty());
    }
    require(known_studio_servers(address, 2001) == servers);
  } catch (const Failure& failure) {
    require(std::string(failure.what()).size() > 0);
  }
  try {
    const int port = port_number(address);
    require(port > 0 && port <= highest_port);
  } catch (const Failure&) {
  }
  return 0;
}
