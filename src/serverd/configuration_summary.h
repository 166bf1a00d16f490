#pragma once

#include <iosfwd>

#include "serverd/configuration.h"

namespace lineweir::serverd {

// Whether those who connect to the address have to speak TLS.
bool needs_tls(const Configuration& configuration, const SocketAddress& address);

// The certificate and the key that are used: those named, or those that the server makes in its
// folder.
TlsFiles tls_files_of(const Configuration& configuration);

// Tells a person what a server does by this configuration.
void describe(const Configuration& configuration, std::ostream& out);

}  // namespace lineweir::serverd
