#pragma once

#include <list>
#include <map>
#include <memory>
#include <string>

#include "server/metrics.h"
#include "server/server_options.h"
#include "server/session.h"
#include "server/session_services.h"

namespace lineweir::server {

// The connections of all consoles. None is told anything behind its end.
class SeatConnections {
 public:
  // The options are the server's present ones.
  SeatConnections(const Context& context, SessionServices services, SeatBook& seats,
                  const ServerOptions& options);
  ~SeatConnections();
  SeatConnections(const SeatConnections&) = delete;
  SeatConnections& operator=(const SeatConnections&) = delete;

  void accept(std::unique_ptr<platform::Connection> connection);

  // Runs each second: the heartbeat goes out, and who is silent ends. The server could not listen
  // for `forgiven`.
  void beat(platform::Milliseconds forgiven);
  // To everybody who is let in.
  void tell(const Telling& telling);
  // The names of the groups, and which are open, to everybody in a group.
  void tell_groups();
  void tell_new_rights(const std::string& user);
  // The user's consoles are told the sentence, in UTF-8, and end.
  void end(const std::string& user, const std::string& why);
  void end_all();

  QueueFigures queues() const;

 private:
  std::size_t open() const;
  std::size_t open_from(const std::string& peer) const;
  // Ends a connection, of the peer where one is named, that nobody has been let in on; false where
  // there is none.
  bool make_room(const std::string& peer);
  void refuse(const std::string& why);
  void remove_later(Session& session);

  const Context& context_;
  SessionServices services_;
  SeatBook& seats_;
  const ServerOptions& options_;
  std::list<std::unique_ptr<Session>> sessions_;
  bool full_is_told_ = false;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace lineweir::server
