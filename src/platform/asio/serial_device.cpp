#include "platform/asio/serial_device.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "platform/asio/stream_connection.h"
#include "platform/disk/file_descriptor.h"

namespace lineweir::platform {

namespace {

[[noreturn]] void fail_to_open(const std::string& device, const std::string& reason) {
  throw std::runtime_error("Can't open " + device + ": " + reason);
}

bool set_up(int descriptor) {
  termios settings{};
  if (::tcgetattr(descriptor, &settings) != 0) return false;
  ::cfmakeraw(&settings);
  settings.c_cflag &= ~static_cast<tcflag_t>(CSTOPB | CRTSCTS | PARENB);
  // Without modem lines: neither opening nor writing waits for them.
  settings.c_cflag |= CLOCAL | CREAD;
  settings.c_cc[VMIN] = 1;
  settings.c_cc[VTIME] = 0;
  return ::cfsetspeed(&settings, B1200) == 0 && ::tcsetattr(descriptor, TCSANOW, &settings) == 0;
}

}  // namespace

std::unique_ptr<Connection> open_serial_device(AsioLoop& loop, const std::string& device) {
  FileDescriptor file(::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (!file.is_open()) fail_to_open(device, std::strerror(errno));
  if (::isatty(file.get()) == 0) fail_to_open(device, "it is no serial port");
  // Two programs would each get half of what the equipment says. The lock also holds against
  // processes of root, which the exclusive use doesn't keep away.
  if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0 || ::ioctl(file.get(), TIOCEXCL) != 0) {
    fail_to_open(device, std::strerror(errno));
  }
  if (!set_up(file.get())) fail_to_open(device, std::strerror(errno));
  ::tcflush(file.get(), TCIFLUSH);
  SerialStream stream(loop.context(), ::fcntl(file.get(), F_DUPFD_CLOEXEC, 0));
  return make_connection(loop, std::move(stream), device);
}

}  // namespace lineweir::platform
