#pragma once

#include <QPointer>
#include <QTcpSocket>
#include <memory>
#include <vector>

#include "platform/client_socket.h"
#include "platform/qt/posted_call.h"
#include "platform/qt/tls_start.h"

namespace lineweir::platform {

// A host that begins with "tls:" is reached by TLS 1.2 or later: the connection counts as
// connecting until it is secured, and is refused where the certificate is neither vouched for by
// one of the system's authorities nor the one that the user has trusted.
//
// A connection that the other side has closed, or that has failed, counts as closed; what was
// received before can still be taken, until connect() or close().
//
// Nothing here waits for the other side but the destructor: a closed connection that has bytes left
// to send sends them behind the scenes, beside the next connection.
class QtClientSocket final : public ClientSocket {
 public:
  // A certificate that the user may trust, or have trusted before.
  struct DoubtfulCertificate {
    std::string host;
    int port = 0;
    std::string fingerprint;
    // Empty where none was trusted for this server.
    std::string trusted_fingerprint;
  };

  // Bytes that may wait to be sent. A server that reads so little is given up: the connection is
  // cut and the sender gets a Failure of number 40006.
  static constexpr qint64 most_unsent = 1024 * 1024;
  // Bytes kept until they are taken; the server has to wait when there are more.
  static constexpr qint64 most_unread = 1024 * 1024;
  static constexpr Milliseconds longest_flush{2000};

  // The loop must outlive this object.
  explicit QtClientSocket(EventLoop& loop);
  ~QtClientSocket() override;

  // The fingerprint of the certificate that is trusted for a server, or an empty one.
  std::function<std::string(const std::string& host, int port)> trusted_fingerprint;
  // A connection was refused for its certificate. Called from the loop.
  std::function<void(const DoubtfulCertificate& certificate)> on_doubt;

  int state() const override;
  // A port that can't be is a Failure of number 5.
  void connect(const std::string& host, int port) override;
  std::string refusal() const override { return refusal_; }
  bool refusal_is_asked() const override { return doubted_ && on_doubt; }
  void close() override;
  std::size_t bytes_received() const override;
  std::string get_data() override;
  void send_data(std::string_view bytes) override;

 private:
  void make_socket(bool secured);
  bool is_secured() const;
  void start_tls(QSslSocket& socket, const std::string& host, int port);
  void refuse(const TlsRefusal& refusal, DoubtfulCertificate doubt);
  // What has not gone to the other side's machine as far as this one knows.
  static qint64 unsent(const QTcpSocket& socket);
  void cut();
  // Leaves the present connection alone with its unsent bytes, for at most longest_flush.
  void send_rest_apart();

  PostedCall tell_connected_;
  PostedCall tell_received_;
  PostedCall tell_doubt_;
  std::string refusal_;
  bool doubted_ = false;
  DoubtfulCertificate doubt_;
  // Those that still send their rest. Each ends by itself and may be gone.
  std::vector<QPointer<QTcpSocket>> leaving_;
  // Below the calls that its signals post, so that it goes first.
  std::unique_ptr<QTcpSocket> socket_;
  // Of a socket that is being secured.
  std::unique_ptr<TlsStart> tls_;
};

}  // namespace lineweir::platform
