#include "platform/asio/tcp_listener.h"

#include <utility>

#include <boost/asio/steady_timer.hpp>

#include "platform/asio/open_port.h"
#include "platform/asio/stream_connection.h"
#include "platform/asio/tls_identity.h"

namespace lineweir::platform {

namespace {

using asio::ip::tcp;

// What the system keeps for a peer that doesn't read; a larger buffer would hide from the queue's
// bound that the peer is slow.
constexpr int send_buffer = 32 * 1024;
// One kind of trouble is told so often at most.
constexpr Milliseconds trouble_every{10'000};

}  // namespace

class TcpListener::Inside : public std::enable_shared_from_this<Inside> {
 public:
  Inside(AsioLoop& loop, Options options)
      : loop_(loop),
        options_(std::move(options)),
        acceptor_(open_port(loop.context(), options_.address, options_.port)),
        pause_(loop.context()) {}

  // Null once the listener is gone.
  TcpListener* listener = nullptr;

  std::uint16_t port() const { return acceptor_.local_endpoint().port(); }

  void accept() {
    acceptor_.async_accept([self = shared_from_this()](const error_code& error, tcp::socket peer) {
      if (self->listener == nullptr) return;
      if (!error) {
        self->greet(std::move(peer));
        // Who was greeted may have ended the listener.
        if (self->listener != nullptr) self->accept();
      } else if (error == asio::error::connection_aborted || error == asio::error::interrupted) {
        self->accept();
      } else {
        self->accept_later(error);
      }
    });
  }

  void close() {
    listener = nullptr;
    error_code ignored;
    acceptor_.close(ignored);
    pause_.cancel();
  }

 private:
  void accept_later(const error_code& error) {
    tell("Nobody can connect for the moment: " + error.message(), last_pause_);
    pause_.expires_after(pause_without_descriptors);
    pause_.async_wait([self = shared_from_this()](const error_code&) {
      if (self->listener != nullptr) self->accept();
    });
  }

  void greet(tcp::socket peer) {
    error_code failed;
    const tcp::endpoint endpoint = peer.remote_endpoint(failed);
    if (!failed) peer.set_option(tcp::no_delay(true), failed);
    if (!failed) peer.set_option(asio::socket_base::send_buffer_size(send_buffer), failed);
    // It has gone again.
    if (failed) return;
    const std::string address = endpoint.address().to_string();
    if (options_.tls != nullptr) {
      shake_hands(std::move(peer), address);
    } else {
      hand_over(make_connection(loop_, PlainStream(std::move(peer)), address));
    }
  }

  struct Handshake {
    Handshake(tcp::socket peer, SSL_CTX* context)
        : stream(std::make_unique<TlsStream>(std::move(peer), context)),
          limit(stream->get_executor()) {}

    std::unique_ptr<TlsStream> stream;
    asio::steady_timer limit;
  };

  void shake_hands(tcp::socket peer, const std::string& address) {
    if (handshakes_ >= options_.most_handshakes) {
      tell("Too many begin to connect at once", last_refusal_);
      return;
    }
    ++handshakes_;
    const auto handshake = std::make_shared<Handshake>(std::move(peer), options_.tls->context());
    handshake->limit.expires_after(options_.longest_handshake);
    handshake->limit.async_wait([weak = std::weak_ptr(handshake)](const error_code& error) {
      const auto late = weak.lock();
      error_code ignored;
      if (!error && late && late->stream) late->stream->next_layer().close(ignored);
    });
    handshake->stream->async_handshake(
        [self = shared_from_this(), handshake, address](const error_code& error) {
          --self->handshakes_;
          handshake->limit.cancel();
          if (self->listener == nullptr) return;
          if (error) {
            self->tell("No TLS with " + address + ": " + error.message(), self->last_refusal_);
          } else {
            self->hand_over(make_connection(self->loop_, std::move(handshake->stream), address));
          }
        });
  }

  void hand_over(std::unique_ptr<Connection> connection) {
    if (listener->on_connection) listener->on_connection(std::move(connection));
  }

  void tell(const std::string& trouble, Milliseconds& last) {
    if (!options_.on_trouble || (last.count() != 0 && loop_.now() - last < trouble_every)) return;
    last = loop_.now();
    options_.on_trouble(trouble);
  }

  AsioLoop& loop_;
  Options options_;
  tcp::acceptor acceptor_;
  asio::steady_timer pause_;
  int handshakes_ = 0;
  Milliseconds last_pause_{0};
  Milliseconds last_refusal_{0};
};

TcpListener::TcpListener(AsioLoop& loop, Options options)
    : inside_(std::make_shared<Inside>(loop, std::move(options))) {
  inside_->listener = this;
}

TcpListener::~TcpListener() { inside_->close(); }

void TcpListener::accept() { inside_->accept(); }

std::uint16_t TcpListener::port() const { return inside_->port(); }

}  // namespace lineweir::platform
