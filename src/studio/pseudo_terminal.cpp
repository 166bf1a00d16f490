#include "studio/pseudo_terminal.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace lineweir::studio {
namespace {

int checked(int result, const char* what) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), what);
  return result;
}

// As a serial port that nothing has been done to: every byte passes as it is, and none is echoed.
void make_raw(int terminal) {
  termios settings{};
  checked(tcgetattr(terminal, &settings), "tcgetattr");
  cfmakeraw(&settings);
  cfsetispeed(&settings, B1200);
  cfsetospeed(&settings, B1200);
  checked(tcsetattr(terminal, TCSANOW, &settings), "tcsetattr");
}

}  // namespace

PseudoTerminal::PseudoTerminal()
    : box_end_(checked(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC), "posix_openpt")) {
  checked(grantpt(descriptor()), "grantpt");
  checked(unlockpt(descriptor()), "unlockpt");
  const char* const name = ptsname(descriptor());
  if (name == nullptr) throw std::system_error(errno, std::generic_category(), "ptsname");
  device_ = name;
  device_end_ = Descriptor(checked(open(name, O_RDWR | O_NOCTTY | O_CLOEXEC), name));
  make_raw(device_end_.number());
  const int flags = checked(fcntl(descriptor(), F_GETFL), "fcntl");
  checked(fcntl(descriptor(), F_SETFL, flags | O_NONBLOCK), "fcntl");
}

std::string PseudoTerminal::read() {
  std::array<char, 4096> buffer;
  const ssize_t count = ::read(descriptor(), buffer.data(), buffer.size());
  return count > 0 ? std::string(buffer.data(), static_cast<std::size_t>(count)) : std::string();
}

std::size_t PseudoTerminal::write(std::string_view text) {
  std::size_t lost = discard_unread();
  while (!text.empty()) {
    const ssize_t count = ::write(descriptor(), text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return lost + text.size();
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return lost;
}

std::size_t PseudoTerminal::discard_unread() {
  int unread = 0;
  if (ioctl(device_end_.number(), FIONREAD, &unread) < 0 || unread <= longest_unread) return 0;
  if (tcflush(device_end_.number(), TCIFLUSH) < 0) return 0;
  return static_cast<std::size_t>(unread);
}

}  // namespace lineweir::studio
