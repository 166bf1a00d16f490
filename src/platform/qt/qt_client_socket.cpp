#include "platform/qt/qt_client_socket.h"

#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QSignalBlocker>
#include <QTimer>

#include "base/failure.h"
#include "platform/qt/server_address.h"

namespace lineweir::platform {

namespace {

constexpr int highest_port = 65535;

}  // namespace

QtClientSocket::QtClientSocket(EventLoop& loop)
    : tell_connected_(loop, [this] { on_connect(); }),
      tell_received_(loop,
                     [this] {
                       if (bytes_received() > 0) on_data_arrival();
                     }),
      tell_doubt_(loop, [this] {
        if (on_doubt) on_doubt(doubt_);
      }) {
  make_socket(false);
}

QtClientSocket::~QtClientSocket() {
  close();
  QElapsedTimer elapsed;
  elapsed.start();
  for (const QPointer<QTcpSocket>& socket : leaving_) {
    while (socket && unsent(*socket) > 0) {
      const auto left = longest_flush.count() - elapsed.elapsed();
      if (left <= 0 || !socket->waitForBytesWritten(static_cast<int>(left))) break;
    }
    delete socket;
  }
}

qint64 QtClientSocket::unsent(const QTcpSocket& socket) {
  const auto* const secured = qobject_cast<const QSslSocket*>(&socket);
  return socket.bytesToWrite() + (secured != nullptr ? secured->encryptedBytesToWrite() : 0);
}

void QtClientSocket::make_socket(bool secured) {
  tls_.reset();
  socket_.reset(secured ? new QSslSocket : new QTcpSocket);
  socket_->setProxy(QNetworkProxy::NoProxy);
  socket_->setReadBufferSize(most_unread);
  QObject::connect(socket_.get(), &QTcpSocket::connected, socket_.get(), [this] {
    // A command is a few bytes, which must not wait for more.
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    if (!is_secured()) tell_connected_.post();
  });
  QObject::connect(socket_.get(), &QTcpSocket::readyRead, socket_.get(),
                   [this] { tell_received_.post(); });
}

bool QtClientSocket::is_secured() const {
  return qobject_cast<const QSslSocket*>(socket_.get()) != nullptr;
}

int QtClientSocket::state() const {
  switch (socket_->state()) {
    case QAbstractSocket::ConnectedState:
      return is_secured() && !static_cast<const QSslSocket&>(*socket_).isEncrypted()
                 ? socket_connecting
                 : socket_connected;
    case QAbstractSocket::HostLookupState:
    case QAbstractSocket::ConnectingState:
      return socket_connecting;
    default:
      return socket_closed;
  }
}

void QtClientSocket::connect(const std::string& host, int port) {
  if (state() != socket_closed) {
    throw Failure(failure_number::socket_wrong_state, "The socket is already in use");
  }
  if (port < 1 || port > highest_port) {
    throw Failure(failure_number::invalid_argument, "There is no port " + std::to_string(port));
  }
  cut();
  refusal_.clear();
  doubted_ = false;
  const ServerAddress address = server_address(host);
  if (address.secured) {
    make_socket(true);
    return start_tls(static_cast<QSslSocket&>(*socket_), address.host, port);
  }
  if (is_secured()) make_socket(false);
  socket_->connectToHost(QString::fromLatin1(host.data(), static_cast<qsizetype>(host.size())),
                         static_cast<quint16>(port));
}

void QtClientSocket::start_tls(QSslSocket& socket, const std::string& host, int port) {
  DoubtfulCertificate doubt{
      .host = host, .port = port, .fingerprint = {}, .trusted_fingerprint = {}};
  if (trusted_fingerprint) doubt.trusted_fingerprint = trusted_fingerprint(host, port);
  QObject::connect(&socket, &QSslSocket::encrypted, &socket, [this] { tell_connected_.post(); });
  tls_ = std::make_unique<TlsStart>(
      socket, host, doubt.trusted_fingerprint,
      [this, doubt](const TlsRefusal& refusal) { refuse(refusal, doubt); });
  if (!QSslSocket::supportsSsl()) {
    return refuse({.reason = "This machine has no TLS."}, doubt);
  }
  socket.connectToHostEncrypted(
      QString::fromLatin1(host.data(), static_cast<qsizetype>(host.size())),
      static_cast<quint16>(port));
}

void QtClientSocket::refuse(const TlsRefusal& refusal, DoubtfulCertificate doubt) {
  refusal_ = refusal.reason;
  using enum CertificateCheck::Verdict;
  if (refusal.verdict == Unknown || refusal.verdict == Changed) {
    doubt_ = std::move(doubt);
    doubt_.fingerprint = refusal.fingerprint;
    doubted_ = true;
    tell_doubt_.post();
  }
}

void QtClientSocket::close() {
  if (state() == socket_connected && unsent(*socket_) > 0) send_rest_apart();
  cut();
}

void QtClientSocket::cut() {
  tls_.reset();
  const QSignalBlocker no_signals(*socket_);
  // The first leaves alone what a connection that has already ended had received.
  socket_->abort();
  socket_->close();
  tell_connected_.cancel();
  tell_received_.cancel();
}

void QtClientSocket::send_rest_apart() {
  QTcpSocket* const leaving = socket_.release();
  make_socket(false);
  leaving->disconnect();
  QObject::connect(leaving, &QTcpSocket::disconnected, leaving, &QObject::deleteLater);
  QTimer::singleShot(longest_flush, leaving, [leaving] {
    leaving->abort();
    leaving->deleteLater();
  });
  std::erase_if(leaving_, [](const QPointer<QTcpSocket>& socket) { return socket.isNull(); });
  leaving_.emplace_back(leaving);
  leaving->disconnectFromHost();
}

std::size_t QtClientSocket::bytes_received() const {
  return static_cast<std::size_t>(socket_->bytesAvailable());
}

std::string QtClientSocket::get_data() {
  if (!socket_->isOpen()) return {};
  return socket_->readAll().toStdString();
}

void QtClientSocket::send_data(std::string_view bytes) {
  if (state() != socket_connected) {
    throw Failure(failure_number::socket_wrong_state, "The socket is not connected");
  }
  const auto count = static_cast<qint64>(bytes.size());
  if (unsent(*socket_) + count > most_unsent) {
    cut();
    throw Failure(failure_number::socket_wrong_state,
                  "The connection was cut: the server takes no more data");
  }
  socket_->write(bytes.data(), count);
}

}  // namespace lineweir::platform
