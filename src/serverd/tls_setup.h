#pragma once

#include <memory>
#include <string>

#include "platform/asio/tls_identity.h"
#include "server/server_log.h"
#include "serverd/configuration.h"

namespace lineweir::serverd {

// Whether any of the addresses has TLS.
bool needs_tls(const Configuration& configuration);

// Reads the certificate and the key that the configuration names, or those that were made; makes
// them where there are none. Throws ConfigurationError of files that the configuration names,
// std::runtime_error of made ones.
std::unique_ptr<platform::TlsIdentity> set_up_tls(const Configuration& configuration,
                                                  const std::string& file,
                                                  const server::ServerLog& log);

// Refuses files that the configuration names and that can't be used, or not today. Throws
// ConfigurationError.
void check_tls(const Configuration& configuration, const std::string& file);

// The same files anew, or others, whose certificate is not out of its time. Throws as above, and
// then nothing has changed.
void read_anew(platform::TlsIdentity& identity, const Configuration& configuration,
               const std::string& file, const server::ServerLog& log);

}  // namespace lineweir::serverd
