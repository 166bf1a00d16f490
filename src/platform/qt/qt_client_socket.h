#pragma once

#include <QPointer>
#include <QTcpSocket>
#include <memory>
#include <vector>

#include "platform/client_socket.h"
#include "platform/qt/posted_call.h"

namespace lineweir::platform {

// A connection that the other side has closed, or that has failed, counts as closed; what was
// received before can still be taken, until connect() or close().
//
// Nothing here waits for the other side but the destructor: a closed connection that has bytes left
// to send sends them behind the scenes, beside the next connection.
class QtClientSocket final : public ClientSocket {
 public:
  // Bytes that may wait to be sent. A server that reads so little is given up: the connection is
  // cut and the sender gets a Failure of number 40006.
  static constexpr qint64 most_unsent = 1024 * 1024;
  // Bytes kept until they are taken; the server has to wait when there are more.
  static constexpr qint64 most_unread = 1024 * 1024;
  static constexpr Milliseconds longest_flush{2000};

  // The loop must outlive this object.
  explicit QtClientSocket(EventLoop& loop);
  ~QtClientSocket() override;

  int state() const override;
  // A port that can't be is a Failure of number 5.
  void connect(const std::string& host, int port) override;
  void close() override;
  std::size_t bytes_received() const override;
  std::string get_data() override;
  void send_data(std::string_view bytes) override;

 private:
  void make_socket();
  void cut();
  // Leaves the present connection alone with its unsent bytes, for at most longest_flush.
  void send_rest_apart();

  PostedCall tell_connected_;
  PostedCall tell_received_;
  // Those that still send their rest. Each ends by itself and may be gone.
  std::vector<QPointer<QTcpSocket>> leaving_;
  // Below the calls that its signals post, so that it goes first.
  std::unique_ptr<QTcpSocket> socket_;
};

}  // namespace lineweir::platform
