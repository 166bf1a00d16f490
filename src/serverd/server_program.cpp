#include "serverd/server_program.h"

#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <iostream>
#include <utility>

#include "serverd/configuration_summary.h"
#include "serverd/exchange_maker.h"
#include "serverd/tls_setup.h"

namespace lineweir::serverd {

namespace {

using namespace std::chrono_literals;
using server::LogLevel;

// Both cores of a small machine, when a thousand seats come back at once.
constexpr int password_threads = 2;
// A server that was told to end has ended so long after its time, whatever its store does.
constexpr platform::Milliseconds longest_end = 15s;
// And so long after it was told a second time.
constexpr platform::Milliseconds longest_end_at_once = 2s;
constexpr const char* farewell = "The studio's server is shutting down.";

// The one line in the log's place that is for a person alone, who sees it once.
void tell_first_user(const std::string& name, const std::string& password) {
  std::cerr << "first user " + name + ", password " + password + "\n" << std::flush;
}

}  // namespace

ServerProgram::ServerProgram(ProgramOptions options, Configuration configuration)
    : options_(std::move(options)),
      configuration_(std::move(configuration)),
      sink_(STDERR_FILENO, form_of_standard_error(),
            options_.verbose ? LogLevel::Debug : LogLevel::Info),
      log_([this](LogLevel level, const std::string& text) { log(level, text); }),
      letters_(*find_code_page(configuration_.character_set), &transliterator_),
      passwords_(loop_, password_threads),
      store_(configuration_, loop_, log_),
      journal_(configuration_.journal_file, loop_),
      signals_(loop_, [this](int signal) { take_signal(signal); }) {
  for (const server::GroupOptions& group : configuration_.server.groups)
    groups_of_start_.insert(group.number);
  if (needs_tls(configuration_))
    tls_ = set_up_tls(configuration_, options_.configuration_file, log_);
  journal_.on_trouble = [this](const std::string& trouble) { log(LogLevel::Error, trouble); };
  if (platform::Lease* const lease = store_.lease()) {
    stand_by(*lease);
    return;
  }
  listen();
  store_.lock([this] { begin(); }, [this](const std::string& why) { refuse(why); });
  make_server(0);
}

void ServerProgram::make_server(platform::Epoch epoch) {
  server_ = std::make_unique<server::Server>(
      server::ServerServices{.loop = loop_,
                             .clock = clock_,
                             .random = random_,
                             .store = store_.store(),
                             .passwords = passwords_,
                             .letters = letters_,
                             .log = log_,
                             .make_exchange =
                                 [this](const server::GroupOptions& group) {
                                   return make_exchange(group, loop_, random_, log_);
                                 },
                             .journal = &journal_,
                             .epoch = epoch,
                             .owns_store = configuration_.store_database.empty()},
      configuration_.server);
  server_->on_shutdown_asked = [this](int seconds, const std::string& text) {
    shut_down(seconds, text);
  };
}

void ServerProgram::stand_by(platform::Lease& lease) {
  leadership_.emplace(loop_, lease);
  leadership_->on_lead = [this](platform::Epoch epoch) { lead(epoch); };
  leadership_->on_lost = [this] { lose_lead(); };
  // A process that was stopped meanwhile sends nothing of what it was about to.
  loop_.before_sending = [this] { leadership_->look_at_proof(); };
  log(LogLevel::Notice, "stands by, until no other server of its groups serves");
  manager_.tell("READY=1");
  leadership_->start();
}

void ServerProgram::lead(platform::Epoch epoch) {
  log(LogLevel::Notice, "leads its groups, in epoch " + std::to_string(epoch));
  store_.lead(epoch);
  make_server(epoch);
  try {
    listen();
  } catch (const std::runtime_error& error) {
    return refuse(error.what());
  }
  begin();
}

void ServerProgram::lose_lead() {
  begun_ = false;
  listeners_.clear();
  admin_listener_.reset();
  metrics_.reset();
  server_.reset();
  remote_objects_.reset();
  bus_watch_.reset();
  log(LogLevel::Error, "can't prove any more that it leads its groups: stands by");
}

int ServerProgram::run() {
  feed_watchdog();
  loop_.run();
  loop_.cancel(end_at_limit_);
  manager_.tell("STOPPING=1");
  loop_.before_sending = nullptr;
  listeners_.clear();
  admin_listener_.reset();
  metrics_.reset();
  server_.reset();
  if (leadership_) leadership_->end();
  // What the seats were told last still goes out.
  while (loop_.farewells() > 0) loop_.yield();
  return status_;
}

void ServerProgram::begin() {
  begun_ = true;
  server_->start([this] { serve(); }, tell_first_user);
}

void ServerProgram::refuse(const std::string& why) {
  std::cerr << "lineweir-server: " + why + "\n" << std::flush;
  status_ = 1;
  loop_.stop();
}

// Ports and the socket are taken before the store is read, so that a second server of one
// configuration leaves it alone.
void ServerProgram::listen() {
  for (const SocketAddress& address : configuration_.listen) {
    listeners_.push_back(std::make_unique<platform::TcpListener>(
        loop_,
        platform::TcpListener::Options{
            .address = address.address,
            .port = address.port,
            .tls = needs_tls(configuration_, address) ? tls_.get() : nullptr,
            .on_trouble = [this](const std::string& text) { log(LogLevel::Warning, text); }}));
    listeners_.back()->on_connection = [this](std::unique_ptr<platform::Connection> connection) {
      server_->accept(std::move(connection));
    };
  }
  admin_listener_ = std::make_unique<platform::UnixListener>(loop_, configuration_.admin_socket);
  admin_listener_->on_connection = [this](std::unique_ptr<platform::Connection> connection) {
    server_->accept_admin(std::move(connection));
  };
  // An administrator is told what the server waits for.
  admin_listener_->accept();
  if (configuration_.metrics) {
    metrics_ = std::make_unique<platform::MetricsEndpoint>(loop_, configuration_.metrics->address,
                                                           configuration_.metrics->port,
                                                           [this] { return server_->metrics(); });
  }
}

void ServerProgram::serve() {
  const auto bound = [](const SocketAddress& address, std::uint16_t port) {
    return SocketAddress{address.address, port}.text();
  };
  for (std::size_t i = 0; i < listeners_.size(); ++i) {
    const SocketAddress& address = configuration_.listen[i];
    listeners_[i]->accept();
    log(LogLevel::Info, "listens on " + bound(address, listeners_[i]->port()) +
                            (needs_tls(configuration_, address) ? " by TLS" : " in plain text"));
  }
  publish();
  if (metrics_) log(LogLevel::Info, "metrics " + bound(*configuration_.metrics, metrics_->port()));
  std::cout << "ready " + bound(configuration_.listen.front(), listeners_.front()->port()) + "\n"
            << std::flush;
  manager_.tell("READY=1");
}

void ServerProgram::publish() {
  if (configuration_.remote_objects == RemoteBus::None) return;
  const bool system = configuration_.remote_objects == RemoteBus::System;
  const std::string bus = system ? "the system's bus" : "the session's bus";
  bus_watch_ = std::make_unique<platform::AsioDescriptorWatch>(loop_);
  remote_objects_ = std::make_unique<platform::SdbusRemoteService>(
      platform::RemoteServiceGround{loop_, *bus_watch_, loop_, letters_});
  remote_objects_->on_published = [this, bus](bool published, const std::string& why) {
    if (published) return log(LogLevel::Info, "remote objects stand on " + bus);
    log(LogLevel::Warning, "no remote objects on " + bus + ": " + why);
  };
  server_->publish(*remote_objects_);
  remote_objects_->publish(system ? platform::RemoteBus::System : platform::RemoteBus::Session);
}

void ServerProgram::take_signal(int signal) {
  if (signal == SIGHUP) {
    read_anew();
    return;
  }
  ++stops_asked_;
  // There is nobody to be told yet, and nothing to be written.
  if (!begun_) return loop_.stop();
  if (stops_asked_ == 1) {
    shut_down(configuration_.shutdown_seconds, farewell);
  } else if (stops_asked_ == 2) {
    shut_down(0, farewell);
  } else {
    loop_.stop();
  }
}

void ServerProgram::read_anew() {
  try {
    const Configuration next = configuration_of(options_);
    if (tls_) serverd::read_anew(*tls_, next, options_.configuration_file, log_);
    warn_of_later_keys(next);
    server::ServerOptions options = next.server;
    if (!configuration_.store_database.empty()) keep_groups_held(options);
    if (server_) {
      keep_as_they_run(options.groups);
      server_->reconfigure(options);
    }
    configuration_.server = std::move(options);
    configuration_.tls_files = next.tls_files;
    configuration_.shutdown_seconds = next.shutdown_seconds;
    log(LogLevel::Notice, "read the configuration anew");
  } catch (const std::exception& error) {
    log(LogLevel::Error, error.what());
    log(LogLevel::Error, "nothing of the configuration was taken anew");
  }
}

// Nobody else has the groups of the start.
void ServerProgram::keep_groups_held(server::ServerOptions& options) const {
  const auto is_held = [this](const server::GroupOptions& group) {
    return groups_of_start_.contains(group.number);
  };
  std::erase_if(options.groups, [&](const server::GroupOptions& group) {
    if (is_held(group)) return false;
    log_(LogLevel::Warning, "group " + std::to_string(group.number) + " waits for the next start");
    return true;
  });
}

void ServerProgram::keep_as_they_run(std::vector<server::GroupOptions>& groups) const {
  using server::GroupOptions;
  for (GroupOptions& group : groups) {
    const GroupOptions* const as_it_runs = server_->running_group(group.number);
    if (as_it_runs == nullptr) continue;
    const auto keep = [&](const char* key, auto option) {
      if (group.*option == as_it_runs->*option) return;
      log_(LogLevel::Warning, std::string("what has changed in ") + key + " of group " +
                                  std::to_string(group.number) + " waits for the next start");
      group.*option = as_it_runs->*option;
    };
    keep("lines", &GroupOptions::lines);
    keep("kind", &GroupOptions::kind);
    keep("exchange", &GroupOptions::exchange);
    keep("calls_per_minute", &GroupOptions::calls_per_minute);
  }
}

void ServerProgram::warn_of_later_keys(const Configuration& next) const {
  // Other files of a server that has TLS anyway are taken at once.
  Configuration with_table = configuration_;
  with_table.tls = next.tls;
  const auto changes_tls = [&](const SocketAddress& address) {
    return needs_tls(with_table, address) != needs_tls(configuration_, address);
  };
  const struct {
    const char* key;
    bool is_changed;
  } keys[] = {
      {"listen", next.listen != configuration_.listen},
      {"store", next.store_file != configuration_.store_file ||
                    next.store_database != configuration_.store_database},
      {"standby", next.standby != configuration_.standby},
      {"admin_socket", next.admin_socket != configuration_.admin_socket},
      {"metrics", next.metrics != configuration_.metrics},
      {"plain_text_network", next.plain_text_network != configuration_.plain_text_network},
      {"character_set", next.character_set != configuration_.character_set},
      {"remote_objects", next.remote_objects != configuration_.remote_objects},
      {"[tls]", std::ranges::any_of(configuration_.listen, changes_tls)},
  };
  for (const auto& [key, is_changed] : keys) {
    if (!is_changed) continue;
    log_(LogLevel::Warning,
         std::string("what has changed in ") + key + " waits for the next start");
  }
}

void ServerProgram::shut_down(int seconds, const std::string& text) {
  const bool holds = server_->shut_down(seconds, text, [this] {
    if (!server_->has_kept_all()) status_ = 1;
    loop_.stop();
  });
  if (holds) log(LogLevel::Notice, "ends in " + std::to_string(seconds) + " seconds");
  end_by(loop_.now() + std::chrono::seconds(seconds) +
         (seconds > 0 ? longest_end : longest_end_at_once));
}

void ServerProgram::end_by(platform::Milliseconds limit) {
  if (limit_ && *limit_ <= limit) return;
  limit_ = limit;
  loop_.cancel(end_at_limit_);
  end_at_limit_ = loop_.schedule(limit - loop_.now(), [this] {
    log(LogLevel::Error, "ended without having written everything");
    status_ = 1;
    loop_.stop();
  });
}

void ServerProgram::feed_watchdog() {
  if (!manager_.watchdog()) return;
  manager_.tell("WATCHDOG=1");
  loop_.schedule(*manager_.watchdog() / 2, [this] { feed_watchdog(); });
}

}  // namespace lineweir::serverd
