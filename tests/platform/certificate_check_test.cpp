#include "platform/qt/certificate_check.h"

#include <doctest/doctest.h>

#include "test_certificates.h"

namespace lineweir::platform {
namespace {

using Verdict = CertificateCheck::Verdict;

TEST_SUITE("the check of a certificate") {
  TEST_CASE("one that no authority vouches for is the user's to trust, however that is told") {
    const auto identity = test::make_identity({.names = "DNS:studio.example"});
    const auto verdict = [&](const QList<QSslError>& faults, const std::string& trusted = {}) {
      return check_certificate(identity.certificate, faults, "studio.example", trusted).verdict;
    };
    for (const auto error :
         {QSslError::SelfSignedCertificate, QSslError::SelfSignedCertificateInChain,
          QSslError::UnableToGetIssuerCertificate, QSslError::UnableToGetLocalIssuerCertificate,
          QSslError::UnableToVerifyFirstCertificate, QSslError::CertificateUntrusted}) {
      CAPTURE(static_cast<int>(error));
      const QSslError fault(error, identity.certificate);
      CHECK(verdict({fault}) == Verdict::Unknown);
      CHECK(verdict({fault}, fingerprint_of(identity.certificate)) == Verdict::Good);
      CHECK(verdict({fault}, "AB:CD") == Verdict::Changed);
    }
    for (const auto error : {QSslError::CertificateRevoked, QSslError::CertificateRejected,
                             QSslError::CertificateSignatureFailed, QSslError::InvalidPurpose}) {
      CAPTURE(static_cast<int>(error));
      const QSslError self_signed(QSslError::SelfSignedCertificate, identity.certificate);
      CHECK(verdict({self_signed, QSslError(error, identity.certificate)}) == Verdict::Refused);
    }
  }
}

}  // namespace
}  // namespace lineweir::platform
