#include "serverd/tls_setup.h"

#include <algorithm>
#include <filesystem>

#include "platform/asio/tls_certificate.h"
#include "serverd/configuration_summary.h"

namespace lineweir::serverd {

namespace {

using platform::TlsProblem;

[[noreturn]] void refuse(const TlsProblem& problem, const Configuration& configuration,
                         const std::string& file) {
  if (!configuration.tls_files) throw std::runtime_error(problem.what());
  const bool in_key = problem.part == TlsProblem::Part::Key;
  const TlsFiles& files = *configuration.tls_files;
  throw ConfigurationError(
      configuration_error(file, in_key ? files.key_line : files.certificate_line,
                          in_key ? "tls.key" : "tls.certificate",
                          std::string(in_key ? "the certificate's key" : "a certificate") +
                              " in PEM form; " + problem.what()));
}

void tell_fingerprint(const platform::TlsIdentity& identity, const server::ServerLog& log) {
  log(server::LogLevel::Notice,
      "consoles know this server by the fingerprint SHA-256 " + identity.fingerprint());
}

// Consoles refuse it whatever they trust.
void require_in_time(const platform::TlsIdentity& identity, const std::string& certificate) {
  const std::string why = identity.why_out_of_time();
  if (why.empty()) return;
  throw TlsProblem(TlsProblem::Part::Certificate, certificate + ": the certificate " + why);
}

}  // namespace

bool needs_tls(const Configuration& configuration) {
  return std::ranges::any_of(configuration.listen, [&](const SocketAddress& address) {
    return needs_tls(configuration, address);
  });
}

std::unique_ptr<platform::TlsIdentity> set_up_tls(const Configuration& configuration,
                                                  const std::string& file,
                                                  const server::ServerLog& log) {
  const TlsFiles files = tls_files_of(configuration);
  if (!configuration.tls_files && !std::filesystem::exists(files.certificate)) {
    platform::make_certificate(files.certificate, files.key, platform::names_of_this_machine());
    log(server::LogLevel::Notice, "made a certificate for this machine: " + files.certificate);
  }
  try {
    auto identity = std::make_unique<platform::TlsIdentity>(files.certificate, files.key);
    tell_fingerprint(*identity, log);
    if (const std::string why = identity->why_out_of_time(); !why.empty()) {
      log(server::LogLevel::Error, "the certificate " + files.certificate + " " + why +
                                       ": consoles refuse this server until it has another one");
    }
    return identity;
  } catch (const TlsProblem& problem) {
    refuse(problem, configuration, file);
  }
}

void check_tls(const Configuration& configuration, const std::string& file) {
  if (!configuration.tls_files) return;
  try {
    const platform::TlsIdentity usable(configuration.tls_files->certificate,
                                       configuration.tls_files->key);
    require_in_time(usable, configuration.tls_files->certificate);
  } catch (const TlsProblem& problem) {
    refuse(problem, configuration, file);
  }
}

void read_anew(platform::TlsIdentity& identity, const Configuration& configuration,
               const std::string& file, const server::ServerLog& log) {
  const TlsFiles files = tls_files_of(configuration);
  try {
    const platform::TlsIdentity next(files.certificate, files.key);
    const bool is_another = next.fingerprint() != identity.fingerprint();
    if (is_another) require_in_time(next, files.certificate);
    identity.reload(files.certificate, files.key);
    if (is_another) tell_fingerprint(identity, log);
  } catch (const TlsProblem& problem) {
    refuse(problem, configuration, file);
  }
}

}  // namespace lineweir::serverd
