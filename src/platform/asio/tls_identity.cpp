#include "platform/asio/tls_identity.h"

#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>

#include <array>
#include <cstring>

namespace lineweir::platform {

namespace {

using Part = TlsProblem::Part;

// Why OpenSSL could not, in its words; the deepest reason comes first.
std::string reason() {
  const unsigned long first = ERR_get_error();
  ERR_clear_error();
  if (ERR_SYSTEM_ERROR(first)) return std::strerror(ERR_GET_REASON(first));
  const char* const words = ERR_reason_error_string(first);
  return words != nullptr ? words : "no reason told";
}

// A key that is locked by a password would otherwise be asked for on the terminal.
int no_password(char*, int, int, void*) { return -1; }

std::shared_ptr<SSL_CTX> make_context(const std::string& certificate_file,
                                      const std::string& key_file) {
  ERR_clear_error();
  const std::shared_ptr<SSL_CTX> context(SSL_CTX_new(TLS_server_method()), SSL_CTX_free);
  if (!context) throw TlsProblem(Part::Certificate, "TLS can't be used: " + reason());
  SSL_CTX* const raw = context.get();
  SSL_CTX_set_min_proto_version(raw, TLS1_2_VERSION);
  SSL_CTX_set_options(raw, SSL_OP_NO_COMPRESSION | SSL_OP_NO_RENEGOTIATION | SSL_OP_NO_TICKET |
                               SSL_OP_CIPHER_SERVER_PREFERENCE);
  // Seats stay for days; what resumes a session sooner only takes memory.
  SSL_CTX_set_session_cache_mode(raw, SSL_SESS_CACHE_OFF);
  SSL_CTX_set_num_tickets(raw, 0);
  SSL_CTX_set_default_passwd_cb(raw, no_password);

  if (SSL_CTX_use_certificate_chain_file(raw, certificate_file.c_str()) != 1) {
    throw TlsProblem(Part::Certificate, certificate_file + ": " + reason());
  }
  if (SSL_CTX_use_PrivateKey_file(raw, key_file.c_str(), SSL_FILETYPE_PEM) != 1 ||
      SSL_CTX_check_private_key(raw) != 1) {
    throw TlsProblem(Part::Key, key_file + ": " + reason());
  }
  return context;
}

}  // namespace

TlsIdentity::TlsIdentity(const std::string& certificate_file, const std::string& key_file)
    : context_(make_context(certificate_file, key_file)) {}

void TlsIdentity::reload(const std::string& certificate_file, const std::string& key_file) {
  context_ = make_context(certificate_file, key_file);
}

std::string TlsIdentity::why_out_of_time() const {
  const X509* const certificate = SSL_CTX_get0_certificate(context_.get());
  if (X509_cmp_current_time(X509_get0_notAfter(certificate)) < 0) return "has expired";
  if (X509_cmp_current_time(X509_get0_notBefore(certificate)) > 0) return "isn't valid yet";
  return {};
}

std::string TlsIdentity::fingerprint() const {
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
  unsigned int size = 0;
  X509_digest(SSL_CTX_get0_certificate(context_.get()), EVP_sha256(), digest.data(), &size);
  constexpr const char* digits = "0123456789ABCDEF";
  std::string text;
  for (unsigned int i = 0; i < size; ++i) {
    if (i > 0) text += ':';
    text += digits[digest[i] >> 4U];
    text += digits[digest[i] & 15U];
  }
  return text;
}

}  // namespace lineweir::platform
