#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "letters/code_page_letters.h"
#include "platform/asio/asio_descriptor_watch.h"
#include "platform/asio/asio_loop.h"
#include "platform/asio/metrics_endpoint.h"
#include "platform/asio/process_signals.h"
#include "platform/asio/tcp_listener.h"
#include "platform/asio/tls_identity.h"
#include "platform/asio/unix_listener.h"
#include "platform/change_journal/disk_store_journal.h"
#include "platform/icu/icu_transliterator.h"
#include "platform/sdbus/sdbus_remote_service.h"
#include "platform/sodium/sodium_password_hash.h"
#include "platform/sodium/sodium_random_numbers.h"
#include "server/leadership.h"
#include "server/server.h"
#include "serverd/log_sink.h"
#include "serverd/machine_wall_clock.h"
#include "serverd/program_options.h"
#include "serverd/served_store.h"
#include "serverd/service_manager.h"

namespace lineweir::serverd {

// The server between its configuration and its end.
class ServerProgram {
 public:
  // Throws ConfigurationError and std::runtime_error, whose texts are one line.
  ServerProgram(ProgramOptions options, Configuration configuration);
  ServerProgram(const ServerProgram&) = delete;
  ServerProgram& operator=(const ServerProgram&) = delete;

  // Serves until it is told to end; the program's status.
  int run();

 private:
  void make_server(platform::Epoch epoch);
  void listen();
  // The store is this server's.
  void begin();
  // Stands by until no other server of the groups serves.
  void stand_by(platform::Lease& lease);
  void lead(platform::Epoch epoch);
  // Another server may serve from now on: nobody is told anything any more, and nothing is written.
  void lose_lead();
  void refuse(const std::string& why);
  void serve();
  // The groups as remote objects, where they are asked for.
  void publish();
  void take_signal(int signal);
  void read_anew();
  void keep_groups_held(server::ServerOptions& options) const;
  // What a group that runs can't change goes on as it is, which is said.
  void keep_as_they_run(std::vector<server::GroupOptions>& groups) const;
  void warn_of_later_keys(const Configuration& next) const;
  void shut_down(int seconds, const std::string& text);
  // Has ended then, whatever the store does.
  void end_by(platform::Milliseconds limit);
  void feed_watchdog();
  void log(server::LogLevel level, const std::string& text) { sink_.write(level, text); }

  ProgramOptions options_;
  Configuration configuration_;
  // Those that this process holds in a database, whatever was taken out of the file since.
  std::set<int> groups_of_start_;
  LogSink sink_;
  server::ServerLog log_;
  ServiceManager manager_;
  int status_ = 0;
  bool begun_ = false;
  int stops_asked_ = 0;
  std::optional<platform::Milliseconds> limit_;
  platform::EventLoop::CallId end_at_limit_ = 0;

  platform::AsioLoop loop_;
  MachineWallClock clock_;
  platform::SodiumRandomNumbers random_;
  platform::IcuTransliterator transliterator_;
  CodePageLetters letters_;
  platform::SodiumPasswordHash passwords_;
  ServedStore store_;
  platform::DiskStoreJournal journal_;
  std::optional<server::Leadership> leadership_;
  // Null where no address has TLS.
  std::unique_ptr<platform::TlsIdentity> tls_;
  // Null where none are asked for, and while this server doesn't serve.
  std::unique_ptr<platform::AsioDescriptorWatch> bus_watch_;
  std::unique_ptr<platform::SdbusRemoteService> remote_objects_;
  std::unique_ptr<server::Server> server_;
  // In the order of the configuration.
  std::vector<std::unique_ptr<platform::TcpListener>> listeners_;
  std::unique_ptr<platform::UnixListener> admin_listener_;
  std::unique_ptr<platform::MetricsEndpoint> metrics_;
  platform::ProcessSignals signals_;
};

}  // namespace lineweir::serverd
