#pragma once

#include <fcntl.h>
#include <pty.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>

namespace lineweir {

// A serial line whose far end is in the test's hands. It must outlive the port that uses it: once
// both ends are closed another process may get a line of the same name, and finds the port's lock.
class PseudoTerminal {
 public:
  PseudoTerminal() {
    std::array<char, 256> name{};
    if (::openpty(&far_end_, &near_end_, name.data(), nullptr, nullptr) != 0) {
      throw std::runtime_error("no pseudo terminal");
    }
    // Characters written before the console opens its end must not be echoed or changed.
    termios raw{};
    ::tcgetattr(near_end_, &raw);
    ::cfmakeraw(&raw);
    ::tcsetattr(near_end_, TCSANOW, &raw);
    ::fcntl(far_end_, F_SETFL, O_NONBLOCK);
    device_ = name.data();
  }
  ~PseudoTerminal() {
    hang_up();
    ::close(near_end_);
  }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  const std::string& device() const { return device_; }

  void write(std::string_view characters) {
    if (::write(far_end_, characters.data(), characters.size()) !=
        static_cast<ssize_t>(characters.size())) {
      throw std::runtime_error("the pseudo terminal takes no characters");
    }
  }

  // What has arrived by now.
  std::string read() {
    std::string all;
    std::array<char, 4096> piece;
    ssize_t count = 0;
    while ((count = ::read(far_end_, piece.data(), piece.size())) > 0) {
      all.append(piece.data(), static_cast<std::size_t>(count));
    }
    return all;
  }

  void hang_up() {
    if (far_end_ >= 0) ::close(far_end_);
    far_end_ = -1;
  }

 private:
  int far_end_ = -1;
  // Held open so that the name stays this line's own.
  int near_end_ = -1;
  std::string device_;
};

// The console finds its serial port of that number there.
inline void set_device(int number, const std::string& device) {
  ::setenv(("LINEWEIR_COM" + std::to_string(number)).c_str(), device.c_str(), 1);
}

}  // namespace lineweir
