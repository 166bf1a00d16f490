#pragma once

#include <string>
#include <string_view>

#include "base/event.h"

namespace lineweir::platform {

inline constexpr int socket_closed = 0;
inline constexpr int socket_connecting = 6;
inline constexpr int socket_connected = 7;

// A TCP client.
class ClientSocket {
 public:
  virtual ~ClientSocket() = default;

  virtual int state() const = 0;

  // Begins to connect; `state` tells when it is done. A Failure of number 40006 while not closed.
  virtual void connect(const std::string& host, int port) = 0;

  // Why the connection that was asked for last was ended, where that is more than that nobody
  // answered: a sentence for the user. It stays until another one is asked for.
  virtual std::string refusal() const { return {}; }
  // Whether the user is asked about that, in a window of its own.
  virtual bool refusal_is_asked() const { return false; }

  // Ends the connection at once for this side. What was sent before still goes out, for at most 2
  // seconds.
  virtual void close() = 0;

  virtual std::size_t bytes_received() const = 0;
  // Takes all received bytes.
  virtual std::string get_data() = 0;

  // Queues bytes for sending, in order. A Failure of number 40006 while not connected.
  virtual void send_data(std::string_view bytes) = 0;

  Event<void()> on_connect;
  Event<void()> on_data_arrival;
};

}  // namespace lineweir::platform
