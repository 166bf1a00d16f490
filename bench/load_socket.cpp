#include "load_socket.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <openssl/ssl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <iostream>
#include <utility>

namespace lineweir::bench {
namespace {

SSL* new_session(int descriptor) {
  static SSL_CTX* const context = SSL_CTX_new(TLS_client_method());
  SSL* const session = SSL_new(context);
  SSL_set_fd(session, descriptor);
  if (SSL_connect(session) != 1) fail("no TLS");
  return session;
}

}  // namespace

void fail(std::string_view why) {
  std::cerr << "server_load: " << why << std::endl;
  std::exit(1);
}

LoadSocket::LoadSocket(int port, Kind kind)
    : descriptor_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::connect(descriptor_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    fail("a connection was refused");
  }
  const int yes = 1;
  ::setsockopt(descriptor_, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
  if (kind == Kind::Tls) tls_ = {new_session(descriptor_), SSL_free};
}

LoadSocket::~LoadSocket() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

LoadSocket::LoadSocket(LoadSocket&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), tls_(std::move(other.tls_)) {}

LoadSocket& LoadSocket::operator=(LoadSocket&& other) noexcept {
  std::swap(descriptor_, other.descriptor_);
  std::swap(tls_, other.tls_);
  return *this;
}

void LoadSocket::write_all(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written =
        tls_ ? SSL_write(tls_.get(), bytes.data(), static_cast<int>(bytes.size()))
             : ::write(descriptor_, bytes.data(), bytes.size());
    if (written <= 0) fail("a connection was closed");
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

std::string_view LoadSocket::read(char* buffer, std::size_t size) {
  if (tls_) {
    // A record that is not there as a whole would be waited for; those of a server are short.
    const int count = SSL_read(tls_.get(), buffer, static_cast<int>(size));
    if (count <= 0) fail("the server has dropped a seat");
    return {buffer, static_cast<std::size_t>(count)};
  }
  const ssize_t count = ::recv(descriptor_, buffer, size, MSG_DONTWAIT);
  if (count < 0 && errno == EAGAIN) return {};
  if (count <= 0) fail("the server has dropped a seat");
  return {buffer, static_cast<std::size_t>(count)};
}

}  // namespace lineweir::bench
