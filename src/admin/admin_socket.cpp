#include "admin/admin_socket.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "admin/trouble.h"

namespace lineweir::admin {
namespace {

// No server answers with more.
constexpr std::size_t longest_line = 1 << 20;

Trouble no_connection(const std::string& path, int reason) {
  switch (reason) {
    case ENOENT:
    case ENOTDIR:
      return Trouble("There is no socket " + path +
                     ": the server doesn't run, or has another one.");
    case ECONNREFUSED:
      return Trouble("Nobody answers at " + path + ": the server doesn't run.");
    case EACCES:
    case EPERM:
      return Trouble("You may not use " + path + ": only the server's own user and root may.");
    case EAGAIN:
      return Trouble("The server at " + path + " has too much to do.");
    default:
      return Trouble(path + " can't be used: " + std::system_category().message(reason) + ".");
  }
}

}  // namespace

AdminSocket::AdminSocket(const std::string& path)
    : socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) {
    throw Trouble("The socket's name is too long: at most " +
                  std::to_string(sizeof address.sun_path - 1) + " bytes.");
  }
  std::memcpy(address.sun_path, path.data(), path.size());
  if (!socket_.is_open() ||
      ::connect(socket_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    throw no_connection(path, errno);
  }
}

std::string AdminSocket::ask(const std::string& line, std::chrono::seconds patience) {
  send(line + '\n');
  const auto limit = std::chrono::steady_clock::now() + patience;
  for (;;) {
    const auto end = received_.find('\n');
    if (end != std::string::npos) {
      std::string answer = received_.substr(0, end);
      received_.erase(0, end + 1);
      return answer;
    }
    if (received_.size() > longest_line) throw Trouble("What answers is no server of this tool.");
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(limit - std::chrono::steady_clock::now());
    pollfd waiting{socket_.get(), POLLIN, 0};
    if (left.count() <= 0 || ::poll(&waiting, 1, static_cast<int>(left.count())) == 0) {
      throw Trouble("The server doesn't answer.");
    }
    std::array<char, 16'384> buffer;
    const ssize_t count = ::recv(socket_.get(), buffer.data(), buffer.size(), 0);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) throw Trouble("The server has ended the connection.");
    received_.append(buffer.data(), static_cast<std::size_t>(count));
  }
}

void AdminSocket::send(std::string text) {
  while (!text.empty()) {
    const ssize_t count = ::send(socket_.get(), text.data(), text.size(), MSG_NOSIGNAL);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) throw Trouble("The server has ended the connection.");
    text.erase(0, static_cast<std::size_t>(count));
  }
}

}  // namespace lineweir::admin
