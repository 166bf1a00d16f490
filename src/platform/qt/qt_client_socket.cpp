#include "platform/qt/qt_client_socket.h"

#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QSignalBlocker>
#include <QTimer>

#include "base/failure.h"

namespace lineweir::platform {

namespace {

constexpr int highest_port = 65535;

}  // namespace

QtClientSocket::QtClientSocket(EventLoop& loop)
    : tell_connected_(loop, [this] { on_connect(); }), tell_received_(loop, [this] {
        if (bytes_received() > 0) on_data_arrival();
      }) {
  make_socket();
}

QtClientSocket::~QtClientSocket() {
  close();
  QElapsedTimer elapsed;
  elapsed.start();
  for (const QPointer<QTcpSocket>& socket : leaving_) {
    while (socket && socket->bytesToWrite() > 0) {
      const auto left = longest_flush.count() - elapsed.elapsed();
      if (left <= 0 || !socket->waitForBytesWritten(static_cast<int>(left))) break;
    }
    delete socket;
  }
}

void QtClientSocket::make_socket() {
  socket_ = std::make_unique<QTcpSocket>();
  socket_->setProxy(QNetworkProxy::NoProxy);
  socket_->setReadBufferSize(most_unread);
  QObject::connect(socket_.get(), &QTcpSocket::connected, socket_.get(), [this] {
    // A command is a few bytes, which must not wait for more.
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    tell_connected_.post();
  });
  QObject::connect(socket_.get(), &QTcpSocket::readyRead, socket_.get(),
                   [this] { tell_received_.post(); });
}

int QtClientSocket::state() const {
  switch (socket_->state()) {
    case QAbstractSocket::ConnectedState:
      return socket_connected;
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
  socket_->connectToHost(QString::fromLatin1(host.data(), static_cast<qsizetype>(host.size())),
                         static_cast<quint16>(port));
}

void QtClientSocket::close() {
  if (state() == socket_connected && socket_->bytesToWrite() > 0) send_rest_apart();
  cut();
}

void QtClientSocket::cut() {
  const QSignalBlocker no_signals(*socket_);
  // The first leaves alone what a connection that has already ended had received.
  socket_->abort();
  socket_->close();
  tell_connected_.cancel();
  tell_received_.cancel();
}

void QtClientSocket::send_rest_apart() {
  QTcpSocket* const leaving = socket_.release();
  make_socket();
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
  if (socket_->bytesToWrite() + count > most_unsent) {
    cut();
    throw Failure(failure_number::socket_wrong_state,
                  "The connection was cut: the server takes no more data");
  }
  socket_->write(bytes.data(), count);
}

}  // namespace lineweir::platform
