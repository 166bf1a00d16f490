#pragma once

#include <openssl/types.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace lineweir::platform {

// A certificate or a key that can't be used; the text tells the file and the reason.
class TlsProblem : public std::runtime_error {
 public:
  enum class Part { Certificate, Key };

  TlsProblem(Part which, const std::string& text) : std::runtime_error(text), part(which) {}

  Part part;
};

// By what a server proves to those who connect that it is itself: a certificate with its chain, and
// its key, both from files in PEM form.
class TlsIdentity {
 public:
  // Throws TlsProblem.
  TlsIdentity(const std::string& certificate_file, const std::string& key_file);

  // Takes other files, or the same ones anew, for those who connect from now on. Throws TlsProblem,
  // and then nothing has changed.
  void reload(const std::string& certificate_file, const std::string& key_file);

  // The SHA-256 of the certificate, as pairs of hexadecimal digits with colons between them.
  std::string fingerprint() const;

  // Why nobody trusts the certificate today, as a sentence's end such as "has expired"; empty where
  // its time is now.
  std::string why_out_of_time() const;

  SSL_CTX* context() const { return context_.get(); }

 private:
  std::shared_ptr<SSL_CTX> context_;
};

}  // namespace lineweir::platform
