#pragma once

#include <QObject>
#include <QSslSocket>
#include <functional>
#include <string>

#include "platform/qt/certificate_check.h"

namespace lineweir::platform {

// Why a connection isn't secured, and what the user can do about it.
struct TlsRefusal {
  std::string reason;
  CertificateCheck::Verdict verdict = CertificateCheck::Verdict::Refused;
  std::string fingerprint = {};
};

// The beginning of TLS on a socket, until it is secured or refused. Nobody who is asked for TLS and
// doesn't answer by it is waited for longer than `limit`.
class TlsStart {
 public:
  static constexpr int limit_ms = 3000;

  // The fingerprint that was trusted for the server, or an empty one. Nothing is told behind the
  // socket's end; the socket outlives this object.
  TlsStart(QSslSocket& socket, std::string host, std::string trusted_fingerprint,
           std::function<void(const TlsRefusal& refusal)> refused);

 private:
  void judge(const QList<QSslError>& faults);
  void fail();
  void refuse(const TlsRefusal& refusal);

  QSslSocket& socket_;
  std::string host_;
  std::string trusted_fingerprint_;
  std::function<void(const TlsRefusal&)> refused_;
  // The connections of this object to the socket end with it.
  QObject ears_;
};

}  // namespace lineweir::platform
