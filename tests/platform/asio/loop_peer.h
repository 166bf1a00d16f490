#pragma once

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace lineweir::test {

// The other end of a connection, by the system's own calls, which never wait.
class Peer {
 public:
  static Peer tcp(const std::string& address, std::uint16_t port, int receive_buffer = 0) {
    if (address.find(':') != std::string::npos) {
      sockaddr_in6 there{};
      there.sin6_family = AF_INET6;
      there.sin6_port = htons(port);
      ::inet_pton(AF_INET6, address.c_str(), &there.sin6_addr);
      return Peer(AF_INET6, reinterpret_cast<const sockaddr*>(&there), sizeof there,
                  receive_buffer);
    }
    sockaddr_in there{};
    there.sin_family = AF_INET;
    there.sin_port = htons(port);
    ::inet_pton(AF_INET, address.c_str(), &there.sin_addr);
    return Peer(AF_INET, reinterpret_cast<const sockaddr*>(&there), sizeof there, receive_buffer);
  }
  static Peer local(const std::string& path) {
    sockaddr_un there{};
    there.sun_family = AF_UNIX;
    path.copy(there.sun_path, sizeof there.sun_path - 1);
    return Peer(AF_UNIX, reinterpret_cast<const sockaddr*>(&there), sizeof there, 0);
  }
  Peer(Peer&& other) noexcept
      : socket_(std::exchange(other.socket_, -1)), error_(other.error_), ended_(other.ended_) {}
  ~Peer() { close(); }
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;

  int socket() const { return socket_; }
  bool ended() const { return ended_; }
  // Why it has ended; 0 where the other end has closed it in order.
  int error() const { return error_; }

  // So many of the bytes as the system takes now.
  std::size_t write(std::string_view bytes) {
    const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
  }
  // What is there now.
  std::string read() {
    std::string all;
    std::array<char, 65536> piece;
    for (;;) {
      const ssize_t count = ::recv(socket_, piece.data(), piece.size(), 0);
      if (count > 0) {
        all.append(piece.data(), static_cast<std::size_t>(count));
        continue;
      }
      if (count == 0) ended_ = true;
      if (count < 0 && errno != EAGAIN) {
        ended_ = true;
        error_ = errno;
      }
      return all;
    }
  }
  void close_sending() const { ::shutdown(socket_, SHUT_WR); }
  void close() {
    if (socket_ >= 0) ::close(socket_);
    socket_ = -1;
  }

 private:
  Peer(int family, const sockaddr* there, socklen_t size, int receive_buffer)
      : socket_(::socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    if (receive_buffer > 0) {
      ::setsockopt(socket_, SOL_SOCKET, SO_RCVBUF, &receive_buffer, sizeof receive_buffer);
    }
    if (::connect(socket_, there, size) != 0) {
      const std::string reason = std::strerror(errno);
      ::close(socket_);
      throw std::runtime_error("no connection: " + reason);
    }
    ::fcntl(socket_, F_SETFL, O_NONBLOCK);
  }

  int socket_;
  int error_ = 0;
  bool ended_ = false;
};

}  // namespace lineweir::test
