#include "serverd/configuration_summary.h"

#include <filesystem>
#include <ostream>

#include "platform/postgres/postgres_address.h"

namespace lineweir::serverd {

namespace {

void describe_group(const server::GroupOptions& group, std::ostream& out) {
  out << "group " << group.number << ", \"" << group.name << "\": " << group.lines
      << " lines, equipment of kind " << group.kind << ", ";
  if (group.exchange == "simulated") {
    out << "simulated, ";
    if (group.calls_per_minute > 0) {
      out << group.calls_per_minute << " calls a minute";
    } else {
      out << "nobody calls by himself";
    }
  } else {
    out << "an interface " << group.exchange;
  }
  out << '\n';
}

std::string shown_store(const Configuration& configuration) {
  const auto database = platform::PostgresAddress::read(configuration.store_database);
  if (!database) return configuration.store_file;
  return database->shown() + (database->user().empty() ? "" : ", as " + database->user());
}

}  // namespace

bool needs_tls(const Configuration& configuration, const SocketAddress& address) {
  return configuration.tls || (!address.is_loopback() && !configuration.plain_text_network);
}

TlsFiles tls_files_of(const Configuration& configuration) {
  if (configuration.tls_files) return *configuration.tls_files;
  const std::filesystem::path folder = configuration.data_folder;
  return {.certificate = folder / "server.crt", .key = folder / "server.key"};
}

void describe(const Configuration& configuration, std::ostream& out) {
  for (const SocketAddress& address : configuration.listen) {
    out << "listens on " << address.text();
    if (needs_tls(configuration, address)) {
      out << " by TLS, with " << tls_files_of(configuration).certificate
          << (configuration.tls_files ? "" : ", made where it isn't there");
    } else {
      out << " in plain text" << (address.is_loopback() ? "" : ", which others can read");
    }
    out << '\n';
  }
  out << "keeps its data in " << shown_store(configuration) << '\n';
  if (configuration.standby) out << "serves while no other server of its groups does\n";
  if (!configuration.server.address.empty()) {
    out << "tells other servers of its store that it is at " << configuration.server.address
        << '\n';
  }
  if (const server::RetentionOptions& kept = configuration.server.retention; kept.days > 0) {
    const bool whole = kept.what == platform::Store::Forgetting::Calls;
    out << "forgets " << (whole ? "calls" : "who called") << " after " << kept.days << " days\n";
  }
  out << "is administered through " << configuration.admin_socket << '\n';
  if (configuration.metrics) {
    out << "tells its figures on http://" << configuration.metrics->text() << "/metrics\n";
  }
  if (configuration.remote_objects != RemoteBus::None) {
    out << "publishes remote objects on the bus of the "
        << (configuration.remote_objects == RemoteBus::Session ? "session" : "system") << '\n';
  }
  out << "takes " << configuration.server.seats << " seats at most, "
      << configuration.server.seats_of_address << " from one address\n";
  for (const server::FixedSeat& seat : configuration.server.fixed_seats) {
    out << "lets in " << seat.user << " from " << seat.address << " without a password\n";
  }
  for (const server::GroupOptions& group : configuration.server.groups) describe_group(group, out);
}

}  // namespace lineweir::serverd
