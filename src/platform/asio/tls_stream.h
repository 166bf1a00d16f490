#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

#include <openssl/types.h>
#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/tcp.hpp>

namespace lineweir::platform {

// TLS on a TCP socket, the server's side. OpenSSL works on the socket itself, so that a seat that
// is quiet keeps no buffers, and what there is room for goes out without waiting. One operation of
// each kind may be under way at a time; its handler runs from the loop, and keeps the stream alive.
// The program ignores SIGPIPE.
class TlsStream {
 public:
  using Error = boost::system::error_code;
  using Done = std::function<void(const Error& error)>;
  using Moved = std::function<void(const Error& error, std::size_t count)>;

  TlsStream(boost::asio::ip::tcp::socket socket, SSL_CTX* context);

  boost::asio::ip::tcp::socket& next_layer() { return socket_; }
  auto get_executor() { return socket_.get_executor(); }

  void async_handshake(Done done);
  // The buffers stay until the handler has run.
  void async_read_some(boost::asio::mutable_buffer buffer, Moved moved);
  void async_write_some(boost::asio::const_buffer buffer, Moved moved);
  // Says farewell; the peer's own isn't waited for.
  void async_shutdown(Done done);

  // So many bytes as go out without waiting. What is left must be the beginning of what is written
  // next.
  std::size_t write_at_once(boost::asio::const_buffer buffer);

 private:
  // Above 0 when done, as OpenSSL's functions.
  using Attempt = std::function<int(SSL* tls)>;
  void try_it(Attempt attempt, Moved moved);
  void attempt_later(Attempt attempt, Moved moved);
  void attempt_when(boost::asio::ip::tcp::socket::wait_type ready, Attempt attempt, Moved moved);

  boost::asio::ip::tcp::socket socket_;
  std::unique_ptr<SSL, void (*)(SSL*)> tls_;
};

}  // namespace lineweir::platform
