#pragma once

#include <memory>
#include <string>

#include "platform/asio/asio_loop.h"
#include "platform/connection.h"

namespace lineweir::platform {

// Opens a serial port, 1200 bits per second, 8 data bits, no parity, 1 stop bit, for this process
// alone. Its end is told once the device or its other end has gone. Throws std::runtime_error,
// whose text is a sentence.
std::unique_ptr<Connection> open_serial_device(AsioLoop& loop, const std::string& device);

}  // namespace lineweir::platform
