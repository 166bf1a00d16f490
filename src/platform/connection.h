#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace lineweir::platform {

// Why a connection has ended, as its owner is told.
enum class ConnectionEnd {
  // The other end has closed it, or the network has cut it.
  Gone,
  // The other end reads too slowly: more than `Connection::queue_bound` bytes would have waited for
  // it.
  Overflow,
};

// One end of a connection that came in: bytes in both directions, in order. Its owner destroys it
// when it is done with it, also from within its own handlers; what is queued then is lost unless
// close_when_sent() was called before.
class Connection {
 public:
  // So many bytes may wait for the other end.
  static constexpr std::size_t queue_bound = 64 * 1024;

  virtual ~Connection() = default;

  // Where the other end is: its address without the port; "local" for a socket of this machine's
  // file system.
  virtual std::string peer() const = 0;

  // Queues bytes and never waits. Where the other end hasn't taken all that was sent before, what
  // would pass the bound is dropped, and the connection ends with Overflow, which is told from the
  // loop. What is sent at once to one that keeps up may be more. After the end nothing happens.
  virtual void send(std::string_view bytes) = 0;

  // Bytes that haven't gone to the system yet.
  virtual std::size_t queued() const = 0;

  // No more is read; what is queued goes out, for at most two seconds, also when the owner destroys
  // this meanwhile. Nothing is told any more.
  virtual void close_when_sent() = 0;

  // Both are set by the owner. What comes before they are set is kept. Neither runs from within a
  // call of this class; `on_end` runs once, and nothing runs behind it.
  std::function<void(std::string_view bytes)> on_bytes;
  std::function<void(ConnectionEnd end)> on_end;
};

// Where connections come in. Destroyed, it listens no more; its connections stay.
class Listener {
 public:
  virtual ~Listener() = default;

  // Set by the owner before the loop runs again. A connection that is not taken is closed.
  std::function<void(std::unique_ptr<Connection> connection)> on_connection;
};

}  // namespace lineweir::platform
