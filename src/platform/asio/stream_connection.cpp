#include "platform/asio/stream_connection.h"

#include <sys/ioctl.h>
#include <sys/socket.h>
#include <termios.h>

#include <array>
#include <boost/asio/post.hpp>
#include <cassert>

namespace lineweir::platform {

namespace {

constexpr Milliseconds longest_farewell{2000};
// An owner that has set no handlers yet is looked at so often, and a serial line whether it is
// empty.
constexpr Milliseconds look_again{10};
// Frames of the consoles are short; more is read in several pieces.
constexpr std::size_t piece_size = 2048;
// So much may be sent in one round, at whose end as much goes out as the system takes.
constexpr std::size_t most_of_round = std::size_t{1024} * 1024;
// A text that has grown beyond this for once gives its memory back.
constexpr std::size_t kept_capacity = 4096;

auto& socket_of(PlainStream& stream) { return stream; }
auto& socket_of(TlsStream& stream) { return stream.next_layer(); }

// Lets go of the stream; a peer that doesn't read is told that the rest is lost.
template <class Stream>
void abort_stream(Stream& stream) {
  error_code ignored;
  auto& socket = socket_of(stream);
  socket.set_option(asio::socket_base::linger(true, 0), ignored);
  socket.close(ignored);
}

bool has_unsent_characters(SerialStream& stream) {
  int count = 0;
  return ::ioctl(stream.native_handle(), TIOCOUTQ, &count) == 0 && count > 0;
}

void abort_stream(SerialStream& stream) {
  // Closing would wait for characters that the line doesn't take. Those that have gone to a
  // terminal in software would be taken back too.
  if (has_unsent_characters(stream)) ::tcflush(stream.native_handle(), TCOFLUSH);
  ::ioctl(stream.native_handle(), TIOCNXCL);
  error_code ignored;
  stream.close(ignored);
}

template <class Stream>
void close_stream(Stream& stream) {
  error_code ignored;
  socket_of(stream).close(ignored);
}

void close_stream(SerialStream& stream) { abort_stream(stream); }

// A stream, what is on its way through it, and the connection that it belongs to while that lives.
// Every operation under way holds it.
template <class Stream>
class OpenStream final : public RoundSender,
                         public std::enable_shared_from_this<OpenStream<Stream>> {
 public:
  OpenStream(AsioLoop& loop, std::unique_ptr<Stream> stream, Connection& connection)
      : loop_(loop), stream_(std::move(stream)), connection_(&connection) {}

  void send_of_round() override { write(); }

  void start() { later(&OpenStream::read); }

  void send(std::string_view bytes) {
    if (ended_ || closing_) return;
    const std::size_t bound = found_no_room_ ? Connection::queue_bound : most_of_round;
    if (queued() + bytes.size() > bound) {
      end_with_overflow();
      return;
    }
    waiting_.append(bytes);
    write_later();
  }

  std::size_t queued() const { return ended_ ? 0 : waiting_.size() + in_flight_.size() - written_; }

  void close_when_sent() {
    if (ended_ || closing_) return;
    closing_ = true;
    loop_.note_farewells(1);
    loop_.schedule(longest_farewell, [weak = this->weak_from_this()] {
      if (const auto self = weak.lock()) self->abandon();
    });
    write_later();
    if (!reading_) later(&OpenStream::read);
  }

  // The connection is gone.
  void detach() {
    connection_ = nullptr;
    if (closing_ || ended_) return;
    set_ended();
    close_stream(*stream_);
  }

 private:
  void later(void (OpenStream::*work)()) {
    asio::post(loop_.context(), [self = this->shared_from_this(), work] { ((*self).*work)(); });
  }

  void look_later(void (OpenStream::*work)()) {
    loop_.schedule(look_again, [self = this->shared_from_this(), work] { ((*self).*work)(); });
  }

  void write_later() {
    if (writing_) return;
    writing_ = true;
    loop_.send_at_end_of_round(this->shared_from_this());
  }

  void write() {
    if (ended_) return;
    do {
      if (written_ == in_flight_.size()) {
        in_flight_.clear();
        written_ = 0;
        if (in_flight_.capacity() > kept_capacity) in_flight_.shrink_to_fit();
        std::swap(in_flight_, waiting_);
      }
      if (in_flight_.empty()) {
        writing_ = false;
        found_no_room_ = false;
        if (closing_) say_farewell();
        return;
      }
    } while (goes_out_at_once());
    found_no_room_ = true;
    if (!std::exchange(waited_for_room_, true)) return wait_for_room();
    waited_for_room_ = false;
    stream_->async_write_some(rest_in_flight(), [self = this->shared_from_this()](
                                                    const error_code& error, std::size_t count) {
      self->written_ += count;
      if (error) {
        self->end();
      } else {
        self->write();
      }
    });
  }

  // The rest goes out with what is sent at the end of a round, as a process that stood still in
  // between may have nothing more to say.
  void wait_for_room() {
    if constexpr (std::is_same_v<Stream, SerialStream>) {
      write();
    } else {
      socket_of(*stream_).async_wait(asio::socket_base::wait_write,
                                     [self = this->shared_from_this()](const error_code&) {
                                       if (!self->ended_) self->loop_.send_at_end_of_round(self);
                                     });
    }
  }

  asio::const_buffer rest_in_flight() const {
    return asio::buffer(in_flight_.data() + written_, in_flight_.size() - written_);
  }

  // A socket mostly has room, and then waiting for it would cost more than sending does. What ends
  // the connection is found by who waits.
  bool goes_out_at_once() {
    if constexpr (std::is_same_v<Stream, PlainStream>) {
      const asio::const_buffer rest = rest_in_flight();
      const ssize_t count =
          ::send(stream_->native_handle(), rest.data(), rest.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
      if (count > 0) written_ += static_cast<std::size_t>(count);
      if (count > 0) waited_for_room_ = false;
      return count > 0;
    } else if constexpr (std::is_same_v<Stream, TlsStream>) {
      const std::size_t count = stream_->write_at_once(rest_in_flight());
      written_ += count;
      if (count > 0) waited_for_room_ = false;
      return count > 0;
    } else {
      return false;
    }
  }

  // While a connection is being closed, what comes is thrown away: closing a socket that holds
  // unread bytes would take back what was sent.
  void read() {
    if (ended_ || reading_) return;
    if (!closing_ && (connection_ == nullptr || !connection_->on_bytes)) {
      look_later(&OpenStream::read);
      return;
    }
    reading_ = true;
    stream_->async_read_some(asio::buffer(piece_), [self = this->shared_from_this()](
                                                       const error_code& error, std::size_t count) {
      self->reading_ = false;
      self->take(count);
      if (error) {
        self->end_reading(error);
      } else {
        self->read();
      }
    });
  }

  // A peer that sends no more may still read what is on its way.
  void end_reading(const error_code& error) {
    if (closing_ && !all_sent_ && error == asio::error::eof) {
      heard_all_ = true;
    } else {
      end();
    }
  }

  void take(std::size_t count) {
    if (ended_ || closing_ || count == 0) return;
    // The handler may destroy the connection, and itself with it.
    const auto handler = connection_->on_bytes;
    handler(std::string_view(piece_.data(), count));
  }

  void say_farewell() {
    if constexpr (std::is_same_v<Stream, SerialStream>) {
      if (has_unsent_characters(*stream_)) {
        look_later(&OpenStream::write);
        return;
      }
      end();
    } else if constexpr (std::is_same_v<Stream, TlsStream>) {
      stream_->async_shutdown(
          [self = this->shared_from_this()](const error_code&) { self->shut_down_sending(); });
    } else {
      shut_down_sending();
    }
  }

  // The peer, which has read all, closes in turn, and reading ends.
  void shut_down_sending() {
    if constexpr (!std::is_same_v<Stream, SerialStream>) {
      if (ended_) return;
      all_sent_ = true;
      error_code failed;
      socket_of(*stream_).shutdown(asio::socket_base::shutdown_send, failed);
      if (failed || heard_all_) end();
    }
  }

  void abandon() {
    if (ended_) return;
    set_ended();
    abort_stream(*stream_);
  }

  void set_ended() {
    ended_ = true;
    if (closing_) loop_.note_farewells(-1);
  }

  void end_with_overflow() {
    set_ended();
    reason_ = ConnectionEnd::Overflow;
    abort_stream(*stream_);
    later(&OpenStream::tell_end);
  }

  void end() {
    if (ended_) return;
    set_ended();
    close_stream(*stream_);
    if (!closing_) tell_end();
  }

  void tell_end() {
    if (connection_ == nullptr) return;
    if (!connection_->on_end) {
      look_later(&OpenStream::tell_end);
      return;
    }
    const auto handler = connection_->on_end;
    handler(reason_);
  }

  AsioLoop& loop_;
  std::unique_ptr<Stream> stream_;
  Connection* connection_;
  std::array<char, piece_size> piece_;
  std::string waiting_;
  // Being written; its first bytes have gone.
  std::string in_flight_;
  std::size_t written_ = 0;
  ConnectionEnd reason_ = ConnectionEnd::Gone;
  bool reading_ = false;
  bool waited_for_room_ = false;
  // What waits is what the other end was too slow for.
  bool found_no_room_ = false;
  bool writing_ = false;
  // By its owner, once all is sent.
  bool closing_ = false;
  bool all_sent_ = false;
  bool heard_all_ = false;
  bool ended_ = false;
};

template <class Stream>
class StreamConnection final : public Connection {
 public:
  StreamConnection(AsioLoop& loop, std::unique_ptr<Stream> stream, std::string peer)
      : peer_(std::move(peer)),
        stream_(std::make_shared<OpenStream<Stream>>(loop, std::move(stream), *this)) {
    stream_->start();
  }
  ~StreamConnection() override { stream_->detach(); }
  StreamConnection(const StreamConnection&) = delete;
  StreamConnection& operator=(const StreamConnection&) = delete;

  std::string peer() const override { return peer_; }
  void send(std::string_view bytes) override { stream_->send(bytes); }
  std::size_t queued() const override { return stream_->queued(); }
  void close_when_sent() override { stream_->close_when_sent(); }

 private:
  std::string peer_;
  std::shared_ptr<OpenStream<Stream>> stream_;
};

}  // namespace

std::unique_ptr<Connection> make_connection(AsioLoop& loop, PlainStream stream, std::string peer) {
  return std::make_unique<StreamConnection<PlainStream>>(
      loop, std::make_unique<PlainStream>(std::move(stream)), std::move(peer));
}

std::unique_ptr<Connection> make_connection(AsioLoop& loop, std::unique_ptr<TlsStream> stream,
                                            std::string peer) {
  return std::make_unique<StreamConnection<TlsStream>>(loop, std::move(stream), std::move(peer));
}

std::unique_ptr<Connection> make_connection(AsioLoop& loop, SerialStream stream, std::string peer) {
  return std::make_unique<StreamConnection<SerialStream>>(
      loop, std::make_unique<SerialStream>(std::move(stream)), std::move(peer));
}

}  // namespace lineweir::platform
