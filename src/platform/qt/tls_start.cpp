#include "platform/qt/tls_start.h"

#include <QSslConfiguration>
#include <QTimer>
#include <utility>

namespace lineweir::platform {

TlsStart::TlsStart(QSslSocket& socket, std::string host, std::string trusted_fingerprint,
                   std::function<void(const TlsRefusal& refusal)> refused)
    : socket_(socket),
      host_(std::move(host)),
      trusted_fingerprint_(std::move(trusted_fingerprint)),
      refused_(std::move(refused)) {
  QSslConfiguration configuration = socket.sslConfiguration();
  configuration.setProtocol(QSsl::TlsV1_2OrLater);
  configuration.setPeerVerifyMode(QSslSocket::VerifyPeer);
  socket.setSslConfiguration(configuration);
  QObject::connect(&socket, &QSslSocket::sslErrors, &ears_,
                   [this](const QList<QSslError>& faults) { judge(faults); });
  QObject::connect(&socket, &QSslSocket::errorOccurred, &ears_, [this] { fail(); });
  QObject::connect(&socket, &QSslSocket::connected, &ears_, [this] {
    QTimer::singleShot(limit_ms, &ears_, [this] {
      if (socket_.isEncrypted()) return;
      refuse({.reason = host_ + " doesn't answer by TLS."});
      socket_.abort();
    });
  });
  QObject::connect(&socket, &QSslSocket::encrypted, &ears_, [this] { refused_ = nullptr; });
}

void TlsStart::judge(const QList<QSslError>& faults) {
  const QSslCertificate certificate = socket_.peerCertificate();
  const CertificateCheck check =
      check_certificate(certificate, faults, host_, trusted_fingerprint_);
  if (check.verdict == CertificateCheck::Verdict::Good) return socket_.ignoreSslErrors(faults);
  // The socket ends by itself behind this.
  refuse({check.reason, check.verdict, fingerprint_of(certificate)});
}

void TlsStart::fail() {
  if (socket_.error() == QAbstractSocket::SslHandshakeFailedError) {
    return refuse({.reason = "The connection to " + host_ + " could not be secured by TLS."});
  }
  if (socket_.error() == QAbstractSocket::RemoteHostClosedError) {
    refuse({.reason = host_ + " ended the connection before it was secured by TLS."});
  }
}

void TlsStart::refuse(const TlsRefusal& refusal) {
  if (const auto refused = std::exchange(refused_, nullptr)) refused(refusal);
}

}  // namespace lineweir::platform
