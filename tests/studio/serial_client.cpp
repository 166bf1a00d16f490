#include "serial_client.h"

#include <fcntl.h>
#include <poll.h>

#include <array>
#include <stdexcept>

namespace {

constexpr int limit_ms = 10'000;

}  // namespace

SerialClient::SerialClient(const std::string& device)
    : device_(open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
  if (device_.number() < 0) throw std::runtime_error(device + " can't be opened");
}

void SerialClient::send(std::string_view text) {
  if (write(device_.number(), text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
    throw std::runtime_error("the device doesn't take the text");
  }
}

std::string SerialClient::receive(std::size_t count) {
  std::string received;
  while (received.size() < count) {
    const std::string more = receive_some();
    if (more.empty()) break;
    received += more;
  }
  return received;
}

std::string SerialClient::receive_until(std::string_view text) {
  std::string received;
  while (received.find(text) == std::string::npos) {
    const std::string more = receive_some();
    if (more.empty()) break;
    received += more;
  }
  return received;
}

std::string SerialClient::receive_some() {
  pollfd waiting{device_.number(), POLLIN, 0};
  if (poll(&waiting, 1, limit_ms) <= 0) return {};
  std::array<char, 256> buffer;
  const ssize_t count = read(device_.number(), buffer.data(), buffer.size());
  return count > 0 ? std::string(buffer.data(), static_cast<std::size_t>(count)) : std::string();
}
