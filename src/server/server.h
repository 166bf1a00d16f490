#pragma once

#include <functional>
#include <memory>
#include <string>

#include "exchange/exchange.h"
#include "letters/letters.h"
#include "platform/connection.h"
#include "platform/event_loop.h"
#include "platform/password_hash.h"
#include "platform/random_numbers.h"
#include "platform/remote_service.h"
#include "platform/store.h"
#include "platform/store_journal.h"
#include "platform/wall_clock.h"
#include "server/server_log.h"
#include "server/server_options.h"

namespace lineweir::server {

// What a server uses of the world. All outlive it.
struct ServerServices {
  platform::EventLoop& loop;
  const platform::WallClock& clock;
  platform::RandomNumbers& random;
  platform::Store& store;
  platform::PasswordHash& passwords;
  // Of the consoles' texts.
  const Letters& letters;
  ServerLog log;
  // Makes the exchange of a group.
  std::function<std::unique_ptr<exchange::Exchange>(const GroupOptions& group)> make_exchange;
  // Null where what the store hasn't taken yet is kept in memory alone.
  platform::StoreJournal* journal = nullptr;
  // Under which this server leads; 0 where there is only one.
  platform::Epoch epoch = 0;
  // No other server has groups in the store.
  bool owns_store = false;
};

// The studio's server: it owns the groups of lines, lets seats in, and tells every seat of a group
// the same. All runs on one loop.
class Server {
 public:
  Server(ServerServices services, ServerOptions options);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  // Reads the store, again and again until it can be read, and begins to serve. A store without
  // accounts gets one engineer, whose name and password `first_user` is told once.
  void start(std::function<void()> serving,
             std::function<void(std::string name, std::string password)> first_user);

  // A console has connected.
  void accept(std::unique_ptr<platform::Connection> connection);
  // An administrator's tool has connected.
  void accept_admin(std::unique_ptr<platform::Connection> connection);
  // The groups are published as remote objects; the service outlives the server.
  void publish(platform::RemoteService& service);

  // Takes groups and fixed seats anew: names of groups and lines change for everybody, a new group
  // begins, one that is gone ends when its last seat has left. No seat is dropped.
  void reconfigure(ServerOptions options);

  // How a group runs, be it that one that ends when its last seat has left; null where none does.
  const GroupOptions* running_group(int number) const;

  // Tells every seat that the server ends in so many seconds, ends the sessions then, writes what
  // is to be kept and tells `done`. A second call may only shorten the time: tells whether it is
  // this end that holds now.
  bool shut_down(int seconds, const std::string& text, std::function<void()> done);
  // Whether all that was to be kept is in the store or in the journal: asked for at the end.
  bool has_kept_all() const;
  // Asked for by an administrator; set by the program.
  std::function<void(int seconds, std::string text)> on_shutdown_asked;

  // Figures in the text form of Prometheus.
  std::string metrics() const;

 private:
  class Inside;
  std::unique_ptr<Inside> inside_;
};

}  // namespace lineweir::server
