#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "letters/code_page_letters.h"
#include "platform/scripted/scripted_password_hash.h"
#include "platform/scripted/scripted_random_numbers.h"
#include "platform/scripted/scripted_store.h"
#include "platform/scripted/scripted_store_journal.h"
#include "platform/scripted/scripted_wall_clock.h"
#include "server/server.h"
#include "server/trunk.h"
#include "simulation/network.h"
#include "simulation/transcript.h"

namespace lineweir::simulation {

inline constexpr const char* seat_password = "on air";

// The studio's real server on the simulated network, with its store and its exchange, which both
// outlive it. It watches what goes to each seat.
class ServerSite {
 public:
  // Loop, network and transcript outlive the site. The users exist; those of `fixed` are let in by
  // where they are.
  ServerSite(platform::VirtualEventLoop& loop, Network& network, Transcript& transcript,
             std::string address, server::ServerOptions options,
             const std::vector<std::string>& users, std::uint64_t seed);
  ~ServerSite();
  ServerSite(const ServerSite&) = delete;
  ServerSite& operator=(const ServerSite&) = delete;

  void start();
  // As by a loss of power: nothing more is written.
  void crash();
  bool is_up() const { return server_ != nullptr; }
  // Nothing waits for the store.
  bool has_written_all() const;

  // No caller comes or goes by himself any more.
  void quieten();

  exchange::SimulatedExchange& exchange(int group) { return *exchanges_.at(group); }
  server::Server& server() { return *server_; }
  platform::ScriptedStore& store() { return store_; }

  // How many calls the server has seen, from what the exchange did while it was up.
  std::size_t calls_seen() const { return calls_seen_; }
  const std::vector<std::string>& faults() const { return faults_; }
  long frames_watched() const { return frames_watched_; }

 private:
  class WatchedConnection;

  void begin_group(const server::GroupOptions& options, std::uint64_t seed);
  void count(int group, exchange::LineChange change);
  void fault(const std::string& what);

  platform::VirtualEventLoop& loop_;
  Network& network_;
  Transcript& transcript_;
  std::string address_;
  server::ServerOptions options_;
  platform::ScriptedWallClock clock_{loop_};
  platform::ScriptedRandomNumbers random_;
  platform::ScriptedStore store_{loop_};
  platform::ScriptedStoreJournal journal_;
  platform::ScriptedPasswordHash passwords_{loop_};
  CodePageLetters letters_;
  std::map<int, std::unique_ptr<exchange::SimulatedExchange>> exchanges_;
  std::unique_ptr<server::Server> server_;
  bool serving_ = false;
  // By group: the letters that the server has seen last, with the calls on them.
  std::map<int, std::string> seen_letters_;
  std::size_t calls_seen_ = 0;
  std::vector<std::string> faults_;
  long frames_watched_ = 0;
};

}  // namespace lineweir::simulation
