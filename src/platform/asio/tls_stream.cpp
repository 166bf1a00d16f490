#include "platform/asio/tls_stream.h"

#include <openssl/err.h>
#include <openssl/ssl.h>

#include <algorithm>
#include <boost/asio/post.hpp>
#include <boost/asio/ssl/error.hpp>
#include <limits>

namespace lineweir::platform {

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using Error = TlsStream::Error;

int length(std::size_t size) {
  return static_cast<int>(std::min<std::size_t>(size, std::numeric_limits<int>::max()));
}

// Why an attempt came to its end, by what OpenSSL's function has returned.
Error end_of_attempt(int reason) {
  const unsigned long told = ERR_get_error();
  ERR_clear_error();
  if (reason == SSL_ERROR_ZERO_RETURN) return asio::error::eof;
  if (told == 0 || ERR_GET_REASON(told) == SSL_R_UNEXPECTED_EOF_WHILE_READING) {
    return asio::ssl::error::stream_truncated;
  }
  return {static_cast<int>(told), asio::error::get_ssl_category()};
}

}  // namespace

TlsStream::TlsStream(tcp::socket socket, SSL_CTX* context)
    : socket_(std::move(socket)), tls_(SSL_new(context), SSL_free) {
  Error failed;
  socket_.non_blocking(true, failed);
  SSL_set_mode(tls_.get(), SSL_MODE_ENABLE_PARTIAL_WRITE | SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER |
                               SSL_MODE_RELEASE_BUFFERS);
  SSL_set_fd(tls_.get(), socket_.native_handle());
  SSL_set_accept_state(tls_.get());
}

void TlsStream::async_handshake(Done done) {
  attempt_later([](SSL* tls) { return SSL_do_handshake(tls); },
                [done = std::move(done)](const Error& error, std::size_t) { done(error); });
}

void TlsStream::async_read_some(asio::mutable_buffer buffer, Moved moved) {
  Attempt read = [buffer](SSL* tls) { return SSL_read(tls, buffer.data(), length(buffer.size())); };
  if (SSL_has_pending(tls_.get()) == 1) {
    attempt_later(std::move(read), std::move(moved));
  } else {
    attempt_when(tcp::socket::wait_read, std::move(read), std::move(moved));
  }
}

void TlsStream::async_write_some(asio::const_buffer buffer, Moved moved) {
  attempt_later([buffer](SSL* tls) { return SSL_write(tls, buffer.data(), length(buffer.size())); },
                std::move(moved));
}

void TlsStream::async_shutdown(Done done) {
  attempt_later(
      [](SSL* tls) {
        const int said = SSL_shutdown(tls);
        return said == 0 ? 1 : said;
      },
      [done = std::move(done)](const Error& error, std::size_t) { done(error); });
}

std::size_t TlsStream::write_at_once(asio::const_buffer buffer) {
  if (!socket_.is_open()) return 0;
  ERR_clear_error();
  const int count = SSL_write(tls_.get(), buffer.data(), length(buffer.size()));
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

void TlsStream::attempt_later(Attempt attempt, Moved moved) {
  asio::post(get_executor(),
             [this, attempt = std::move(attempt), moved = std::move(moved)]() mutable {
               try_it(std::move(attempt), std::move(moved));
             });
}

void TlsStream::attempt_when(tcp::socket::wait_type ready, Attempt attempt, Moved moved) {
  socket_.async_wait(ready, [this, attempt = std::move(attempt),
                             moved = std::move(moved)](const Error& error) mutable {
    if (error) return moved(error, 0);
    try_it(std::move(attempt), std::move(moved));
  });
}

// OpenSSL has the descriptor's number, which is another's once the socket is closed.
void TlsStream::try_it(Attempt attempt, Moved moved) {
  if (!socket_.is_open()) return moved(asio::error::operation_aborted, 0);
  ERR_clear_error();
  const int result = attempt(tls_.get());
  if (result > 0) return moved({}, static_cast<std::size_t>(result));
  const int reason = SSL_get_error(tls_.get(), result);
  if (reason == SSL_ERROR_WANT_READ) {
    attempt_when(tcp::socket::wait_read, std::move(attempt), std::move(moved));
  } else if (reason == SSL_ERROR_WANT_WRITE) {
    attempt_when(tcp::socket::wait_write, std::move(attempt), std::move(moved));
  } else {
    moved(end_of_attempt(reason), 0);
  }
}

}  // namespace lineweir::platform
