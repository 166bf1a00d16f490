#include "platform/asio/tls_certificate.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <ifaddrs.h>
#include <netdb.h>
#include <openssl/bio.h>
#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rand.h>
#include <openssl/x509v3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "platform/disk/file_descriptor.h"

namespace lineweir::platform {

namespace {

constexpr long day = 24L * 60 * 60;
// A console that has pinned the certificate refuses it once it has expired.
constexpr long validity = 30L * 365 * day;
// A clock that is set later than a console's must not make the certificate one of tomorrow.
constexpr long earlier = -day;
constexpr std::size_t longest_common_name = 64;

template <auto free>
struct Freed {
  template <class Object>
  void operator()(Object* object) const {
    free(object);
  }
};
template <class Object, auto free>
using Owned = std::unique_ptr<Object, Freed<free>>;

using Key = Owned<EVP_PKEY, EVP_PKEY_free>;
using Certificate = Owned<X509, X509_free>;
using Memory = Owned<BIO, BIO_free_all>;

// Null or 0 says that OpenSSL had no memory or no chance.
template <class Result>
Result need(Result result) {
  if (!result) throw std::runtime_error("No certificate can be made: OpenSSL failed");
  return result;
}

void add_extension(X509* certificate, int kind, const std::string& value) {
  const Owned<X509_EXTENSION, X509_EXTENSION_free> extension(
      need(X509V3_EXT_conf_nid(nullptr, nullptr, kind, value.c_str())));
  need(X509_add_ext(certificate, extension.get(), -1));
}

std::string alternative_names(const MachineNames& machine) {
  std::string list;
  const auto add = [&list](const char* kind, const std::string& name) {
    list += (list.empty() ? "" : ",") + std::string(kind) + name;
  };
  for (const std::string& name : machine.names) add("DNS:", name);
  for (const std::string& address : machine.addresses) add("IP:", address);
  return list;
}

Certificate sign(EVP_PKEY* key, const MachineNames& machine) {
  Certificate certificate(need(X509_new()));
  X509* const raw = certificate.get();
  X509_set_version(raw, X509_VERSION_3);

  std::array<unsigned char, 16> serial{};
  need(RAND_bytes(serial.data(), static_cast<int>(serial.size())) == 1);
  serial[0] &= 0x7FU;  // a serial number isn't negative
  const Owned<BIGNUM, BN_free> number(
      need(BN_bin2bn(serial.data(), static_cast<int>(serial.size()), nullptr)));
  need(BN_to_ASN1_INTEGER(number.get(), X509_get_serialNumber(raw)));

  need(X509_gmtime_adj(X509_getm_notBefore(raw), earlier));
  need(X509_gmtime_adj(X509_getm_notAfter(raw), validity));
  need(X509_set_pubkey(raw, key));

  std::string common = machine.names.empty() ? "lineweir-server" : machine.names.front();
  common.resize(std::min(common.size(), longest_common_name));
  X509_NAME* const subject = X509_get_subject_name(raw);
  need(X509_NAME_add_entry_by_txt(subject, "CN", MBSTRING_UTF8,
                                  reinterpret_cast<const unsigned char*>(common.data()),
                                  static_cast<int>(common.size()), -1, 0));
  need(X509_set_issuer_name(raw, subject));

  add_extension(raw, NID_basic_constraints, "critical,CA:FALSE");
  add_extension(raw, NID_key_usage, "critical,digitalSignature");
  add_extension(raw, NID_ext_key_usage, "serverAuth");
  add_extension(raw, NID_subject_alt_name, alternative_names(machine));
  need(X509_sign(raw, key, EVP_sha256()));
  return certificate;
}

std::string text_of(BIO* memory) {
  char* begin = nullptr;
  const long size = BIO_get_mem_data(memory, &begin);
  return {begin, static_cast<std::size_t>(size)};
}

[[noreturn]] void fail(const std::string& file) {
  throw std::runtime_error(file + " can't be written: " + std::strerror(errno));
}

// The file has its whole content from the moment at which it has its name.
void write_file(const std::string& file, const std::string& content, mode_t mode) {
  const std::string unfinished = file + ".new";
  ::unlink(unfinished.c_str());
  FileDescriptor descriptor(
      ::open(unfinished.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
  if (!descriptor.is_open()) fail(unfinished);
  if (::write(descriptor.get(), content.data(), content.size()) !=
          static_cast<ssize_t>(content.size()) ||
      ::fsync(descriptor.get()) != 0 || !descriptor.close()) {
    fail(unfinished);
  }
  if (std::rename(unfinished.c_str(), file.c_str()) != 0) fail(file);
}

bool is_host_name(const std::string& name) {
  return !name.empty() && std::ranges::all_of(name, [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.';
  });
}

void add_once(std::vector<std::string>& list, const std::string& text) {
  if (std::ranges::find(list, text) == list.end()) list.push_back(text);
}

void add_address(std::vector<std::string>& list, const sockaddr* address) {
  if (address == nullptr) return;
  std::array<char, INET6_ADDRSTRLEN> text{};
  const void* bytes = nullptr;
  if (address->sa_family == AF_INET) {
    bytes = &reinterpret_cast<const sockaddr_in*>(address)->sin_addr;
  } else if (address->sa_family == AF_INET6) {
    const auto& number = reinterpret_cast<const sockaddr_in6*>(address)->sin6_addr;
    // One of these holds for a cable only, not for the machine.
    if (IN6_IS_ADDR_LINKLOCAL(&number)) return;
    bytes = &number;
  } else {
    return;
  }
  if (::inet_ntop(address->sa_family, bytes, text.data(), text.size()) == nullptr) return;
  add_once(list, text.data());
}

}  // namespace

MachineNames names_of_this_machine() {
  MachineNames machine;
  std::array<char, 256> name{};
  if (::gethostname(name.data(), name.size() - 1) == 0 && is_host_name(name.data())) {
    machine.names.emplace_back(name.data());
  }
  add_once(machine.names, "localhost");

  machine.addresses = {"127.0.0.1", "::1"};
  ifaddrs* all = nullptr;
  if (::getifaddrs(&all) != 0) return machine;
  const Owned<ifaddrs, freeifaddrs> owned(all);
  for (const ifaddrs* each = all; each != nullptr; each = each->ifa_next) {
    add_address(machine.addresses, each->ifa_addr);
  }
  return machine;
}

void make_certificate(const std::string& certificate_file, const std::string& key_file,
                      const MachineNames& machine) {
  const Key key(need(EVP_EC_gen("P-256")));
  const Certificate certificate = sign(key.get(), machine);
  const Memory key_text(need(BIO_new(BIO_s_mem())));
  need(PEM_write_bio_PKCS8PrivateKey(key_text.get(), key.get(), nullptr, nullptr, 0, nullptr,
                                     nullptr));
  const Memory certificate_text(need(BIO_new(BIO_s_mem())));
  need(PEM_write_bio_X509(certificate_text.get(), certificate.get()));
  // A certificate that is there has its key.
  write_file(key_file, text_of(key_text.get()), S_IRUSR | S_IWUSR);
  write_file(certificate_file, text_of(certificate_text.get()),
             S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH);
}

}  // namespace lineweir::platform
