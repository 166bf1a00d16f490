#pragma once

#include <QByteArray>
#include <QSslCertificate>
#include <QSslKey>
#include <string>

namespace lineweir::test {

// A certificate and its key, made for a test.
struct TestIdentity {
  QSslCertificate certificate;
  QSslKey key;
  QByteArray certificate_text;
  QByteArray key_text;
};

struct TestCertificate {
  // Written as certificates do: "DNS:studio.example,IP:127.0.0.1".
  std::string names;
  // In days from now.
  int from = -1;
  int until = 1;
  bool is_authority = false;
};

// Signed by the issuer, or by itself.
TestIdentity make_identity(const TestCertificate& wish, const TestIdentity* issuer = nullptr);

}  // namespace lineweir::test
