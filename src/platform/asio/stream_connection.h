#pragma once

#include <memory>
#include <string>

#include "platform/asio/asio_loop.h"
#include "platform/asio/asio_streams.h"
#include "platform/connection.h"

namespace lineweir::platform {

// Connections over open streams, of which the peer's handshake is over.
std::unique_ptr<Connection> make_connection(AsioLoop& loop, PlainStream stream, std::string peer);
std::unique_ptr<Connection> make_connection(AsioLoop& loop, std::unique_ptr<TlsStream> stream,
                                            std::string peer);
std::unique_ptr<Connection> make_connection(AsioLoop& loop, SerialStream stream, std::string peer);

}  // namespace lineweir::platform
