#pragma once

#include <QList>
#include <QSslCertificate>
#include <QSslError>
#include <string>

namespace lineweir::platform {

// The SHA-256 of a certificate, "AB:CD:" and so on.
std::string fingerprint_of(const QSslCertificate& certificate);

struct CertificateCheck {
  enum class Verdict {
    Good,
    // No authority vouches for it, and nobody has trusted it.
    Unknown,
    // The same, and the one that was trusted for this server is another.
    Changed,
    // The user has no say: it has expired, is another server's, or is broken.
    Refused,
  };
  Verdict verdict = Verdict::Good;
  // Why it isn't good, as a sentence.
  std::string reason = {};
};

// What is to be done with a server's certificate that the authorities' rules find these faults in.
// One that was trusted for the server, by its fingerprint, needs neither an authority nor the
// server's name, but has to be valid today.
CertificateCheck check_certificate(const QSslCertificate& certificate,
                                   const QList<QSslError>& faults, const std::string& host,
                                   const std::string& trusted_fingerprint);

}  // namespace lineweir::platform
