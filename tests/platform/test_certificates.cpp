#include "test_certificates.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <memory>
#include <stdexcept>

namespace lineweir::test {
namespace {

struct Free {
  void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
  void operator()(X509* certificate) const { X509_free(certificate); }
  void operator()(BIO* bio) const { BIO_free(bio); }
  void operator()(X509_EXTENSION* extension) const { X509_EXTENSION_free(extension); }
};
template <class T>
using Owned = std::unique_ptr<T, Free>;

void demand(bool done) {
  if (!done) throw std::runtime_error("a test's certificate can't be made");
}

template <class Write>
QByteArray text_of(Write write) {
  const Owned<BIO> bio(BIO_new(BIO_s_mem()));
  demand(write(bio.get()) == 1);
  char* bytes = nullptr;
  const long size = BIO_get_mem_data(bio.get(), &bytes);
  return {bytes, static_cast<qsizetype>(size)};
}

template <class T>
Owned<T> read(const QByteArray& text, T* (*reader)(BIO*, T**, pem_password_cb*, void*)) {
  const Owned<BIO> bio(BIO_new_mem_buf(text.constData(), static_cast<int>(text.size())));
  Owned<T> made(reader(bio.get(), nullptr, nullptr, nullptr));
  demand(made != nullptr);
  return made;
}

void add_extension(X509& certificate, int kind, const std::string& value) {
  const Owned<X509_EXTENSION> extension(X509V3_EXT_conf_nid(nullptr, nullptr, kind, value.c_str()));
  demand(extension != nullptr && X509_add_ext(&certificate, extension.get(), -1) == 1);
}

}  // namespace

TestIdentity make_identity(const TestCertificate& wish, const TestIdentity* issuer) {
  constexpr long day = 24L * 60 * 60;
  static long serial = 0;
  const Owned<EVP_PKEY> key(EVP_EC_gen("P-256"));
  const Owned<X509> certificate(X509_new());
  X509& made = *certificate;
  X509_set_version(&made, 2);
  ASN1_INTEGER_set(X509_get_serialNumber(&made), ++serial);
  X509_gmtime_adj(X509_getm_notBefore(&made), wish.from * day);
  X509_gmtime_adj(X509_getm_notAfter(&made), wish.until * day);
  X509_NAME* subject = X509_get_subject_name(&made);
  const std::string name = "test " + std::to_string(serial);
  X509_NAME_add_entry_by_txt(subject, "CN", MBSTRING_ASC,
                             reinterpret_cast<const unsigned char*>(name.c_str()), -1, -1, 0);
  demand(X509_set_pubkey(&made, key.get()) == 1);
  if (!wish.names.empty()) add_extension(made, NID_subject_alt_name, wish.names);
  if (wish.is_authority) add_extension(made, NID_basic_constraints, "critical,CA:TRUE");
  if (issuer == nullptr) {
    X509_set_issuer_name(&made, subject);
    demand(X509_sign(&made, key.get(), EVP_sha256()) > 0);
  } else {
    const Owned<X509> above = read<X509>(issuer->certificate_text, PEM_read_bio_X509);
    const Owned<EVP_PKEY> above_key = read<EVP_PKEY>(issuer->key_text, PEM_read_bio_PrivateKey);
    X509_set_issuer_name(&made, X509_get_subject_name(above.get()));
    demand(X509_sign(&made, above_key.get(), EVP_sha256()) > 0);
  }
  TestIdentity identity;
  identity.certificate_text = text_of([&](BIO* bio) { return PEM_write_bio_X509(bio, &made); });
  identity.key_text = text_of([&](BIO* bio) {
    return PEM_write_bio_PrivateKey(bio, key.get(), nullptr, nullptr, 0, nullptr, nullptr);
  });
  identity.certificate = QSslCertificate(identity.certificate_text);
  identity.key = QSslKey(identity.key_text, QSsl::Ec);
  demand(!identity.certificate.isNull() && !identity.key.isNull());
  return identity;
}

}  // namespace lineweir::test
