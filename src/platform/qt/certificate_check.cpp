#include "platform/qt/certificate_check.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QStringList>
#include <algorithm>

namespace lineweir::platform {
namespace {

// The faults of a certificate for which no authority vouches that this machine knows.
constexpr QSslError::SslError without_authority[] = {
    QSslError::SelfSignedCertificate,          QSslError::SelfSignedCertificateInChain,
    QSslError::UnableToGetIssuerCertificate,   QSslError::UnableToGetLocalIssuerCertificate,
    QSslError::UnableToVerifyFirstCertificate, QSslError::CertificateUntrusted,
};

bool is_without_authority(const QSslError& fault) {
  return std::ranges::find(without_authority, fault.error()) != std::end(without_authority);
}

bool is_of_another_name(const QSslError& fault) {
  return fault.error() == QSslError::HostNameMismatch;
}

// Printable ASCII: what stands in a certificate is whatever its maker wrote.
std::string plain(const QString& text) {
  std::string shown;
  for (const QChar letter : text.left(200)) {
    const char16_t code = letter.unicode();
    shown += code >= 0x20 && code < 0x7F ? static_cast<char>(code) : '?';
  }
  return shown;
}

std::string day(const QDateTime& moment) {
  return plain(moment.toLocalTime().toString(QStringLiteral("yyyy-MM-dd")));
}

std::string names_of(const QSslCertificate& certificate) {
  QStringList names = certificate.subjectAlternativeNames().values();
  if (names.isEmpty()) names = certificate.subjectInfo(QSslCertificate::CommonName);
  names.sort();
  return names.isEmpty() ? "nobody" : plain(names.join(QStringLiteral(", ")));
}

// As short as it can be told, in pieces between which the sentence may be broken.
std::string in_pieces(const std::string& fingerprint) {
  constexpr std::size_t piece = 16;
  std::string digits;
  for (const char letter : fingerprint) {
    if (letter == ':') continue;
    if (digits.size() % (piece + 1) == piece) digits += ' ';
    digits += letter;
  }
  return digits;
}

}  // namespace

std::string fingerprint_of(const QSslCertificate& certificate) {
  return certificate.digest(QCryptographicHash::Sha256).toHex(':').toUpper().toStdString();
}

CertificateCheck check_certificate(const QSslCertificate& certificate,
                                   const QList<QSslError>& faults, const std::string& host,
                                   const std::string& trusted_fingerprint) {
  using enum CertificateCheck::Verdict;
  if (faults.isEmpty()) return {};
  const QDateTime now = QDateTime::currentDateTimeUtc();
  if (certificate.isNull()) return {Refused, host + " has shown no certificate."};
  if (certificate.expiryDate() < now) {
    return {Refused,
            "The certificate of " + host + " expired on " + day(certificate.expiryDate()) + "."};
  }
  if (certificate.effectiveDate() > now) {
    return {Refused, "The certificate of " + host + " isn't valid before " +
                         day(certificate.effectiveDate()) + ". Is this machine's clock right?"};
  }
  const std::string fingerprint = fingerprint_of(certificate);
  if (fingerprint == trusted_fingerprint) return {};
  for (const QSslError& fault : faults) {
    if (!is_without_authority(fault) && !is_of_another_name(fault)) {
      return {Refused,
              "The certificate of " + host + " is refused: " + plain(fault.errorString()) + "."};
    }
  }
  if (std::ranges::none_of(faults, is_without_authority)) {
    return {Refused, "The certificate that " + host + " has shown is for " + names_of(certificate) +
                         " and not for " + host + "."};
  }
  if (!trusted_fingerprint.empty()) {
    return {Changed, "The certificate of " + host +
                         " isn't the one that was trusted before. Lineweir doesn't connect."};
  }
  return {Unknown, "The certificate of " + host + " isn't known. Its fingerprint is " +
                       in_pieces(fingerprint) + "."};
}

}  // namespace lineweir::platform
