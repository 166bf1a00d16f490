#include "serverd/service_manager.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <charconv>
#include <cstddef>
#include <cstdlib>

#include "platform/disk/file_descriptor.h"

namespace lineweir::serverd {

namespace {

std::string_view variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::optional<long> number(std::string_view text) {
  long value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

}  // namespace

ServiceManager::ServiceManager() : socket_(variable("NOTIFY_SOCKET")) {
  // One that begins with "@" has no file.
  if (!socket_.empty() && socket_.front() == '@') socket_.front() = '\0';
  const auto process = number(variable("WATCHDOG_PID"));
  const auto period = number(variable("WATCHDOG_USEC"));
  if (!period || *period <= 0 || (process && *process != ::getpid())) return;
  watchdog_ =
      std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::microseconds(*period));
}

void ServiceManager::tell(std::string_view state) const {
  sockaddr_un there{};
  if (socket_.empty() || socket_.size() >= sizeof there.sun_path) return;
  there.sun_family = AF_UNIX;
  socket_.copy(there.sun_path, socket_.size());
  const platform::FileDescriptor out(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  if (!out.is_open()) return;
  const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + socket_.size());
  // Whether it listens is its own affair.
  static_cast<void>(::sendto(out.get(), state.data(), state.size(), MSG_DONTWAIT | MSG_NOSIGNAL,
                             reinterpret_cast<const sockaddr*>(&there), size));
}

}  // namespace lineweir::serverd
