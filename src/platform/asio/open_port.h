#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include <boost/asio/ip/tcp.hpp>

#include "platform/event_loop.h"

namespace lineweir::platform {

// When no descriptor is left, peers wait so long for the next try.
inline constexpr Milliseconds pause_without_descriptors{100};

// Listens on a TCP port. Throws std::runtime_error, whose text is a sentence.
boost::asio::ip::tcp::acceptor open_port(boost::asio::io_context& context,
                                         const std::string& address, std::uint16_t port);

}  // namespace lineweir::platform
