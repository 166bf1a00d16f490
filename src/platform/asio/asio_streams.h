#pragma once

// Under C++20 Boost 1.74 uses std::exchange without having asked for it.
#include <utility>
// In front of its own header, which would otherwise take the whole of Boost.Asio.
#include <boost/asio/generic/stream_protocol.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>

#include "platform/asio/tls_stream.h"

// The streams of which connections are made.
namespace lineweir::platform {

namespace asio = boost::asio;
using boost::system::error_code;

// TCP and the sockets of the file system.
using PlainStream = asio::generic::stream_protocol::socket;
using SerialStream = asio::posix::stream_descriptor;

}  // namespace lineweir::platform
