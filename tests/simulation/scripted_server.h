#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "simulation/network.h"
#include "wire/server_packet_codec.h"
#include "wire/server_packet_framing.h"

namespace lineweir::simulation {

inline constexpr char free_letter = 'F';

// What the server has told one session of the studio; what it hasn't told yet is empty.
struct ToldState {
  static constexpr int line_count = 10;

  int group = 1;
  std::string letters = std::string(line_count, free_letter);
  std::array<std::string, line_count> callers;
  std::array<std::string, line_count> line_names;
  std::vector<std::string> groups;
  std::array<std::string, 3> show_times;
};

// The groups that have a studio, from 1; the server names at least these.
inline constexpr int studio_count = 3;

// A server for one console that lives by a seed: it lets users in, turns them away or says nothing,
// answers requests in any order and after any time, and tells of its lines, callers and groups as
// they change. With a heartbeat it sends its time each second.
class ScriptedServer {
 public:
  // Loop, network and transcript outlive the server.
  ScriptedServer(platform::VirtualEventLoop& loop, Network& network, Transcript& transcript,
                 const std::string& address, std::uint64_t seed);
  ~ScriptedServer();
  ScriptedServer(const ScriptedServer&) = delete;
  ScriptedServer& operator=(const ScriptedServer&) = delete;

  bool has_heartbeat() const { return has_heartbeat_; }

  // From now on every user is let in, every request is answered and nothing changes any more.
  void calm_down() { calm_ = true; }

  // What the session that registered last has been told. Null where that has ended, and while an
  // answer to it is still to be given.
  const ToldState* told() const;
  int frames_sent() const { return frames_sent_; }

 private:
  struct Studio {
    std::string letters = std::string(ToldState::line_count, free_letter);
    std::array<std::string, ToldState::line_count> callers;
    std::array<std::string, ToldState::line_count> line_names;
    std::array<std::string, 3> show_times;
  };

  struct Session {
    std::string name;
    std::unique_ptr<Connection> connection;
    ReceiveBuffer received;
    bool registered = false;
    // Counts the registrations, so that answers to an earlier one aren't given any more.
    int registration = 0;
    int group = 1;
    bool answers = true;
    int answers_to_come = 0;
    ToldState told;
  };

  void accept(std::unique_ptr<Connection> connection);
  void receive(Session& session, std::string_view bytes);
  void handle(Session& session, const ServerPacket& packet);
  void take_caller(const Session& from, const ServerPacket& packet);
  Studio& studio_of(const Session& session);
  void answer_later(Session& session, std::function<void()> answer);
  void answer_login(Session& session, ServerCommand command, char yes);

  void change_something();
  void beat();
  void tell_everybody(const std::function<void(Session&)>& tell);
  void tell_group(int group, const std::function<void(Session&)>& tell);
  void tell_all_letters(Session& session, ServerCommand command);
  void tell_letter(Session& session, int line);
  void tell_caller(Session& session, int line);
  void tell_line_names(Session& session);
  void tell_groups(Session& session);
  void tell_show_times(Session& session);
  void tell_times(Session& session);
  void tell_studio(Session& session);
  void send(Session& session, ServerPacket packet);

  platform::VirtualEventLoop& loop_;
  Network& network_;
  Transcript& transcript_;
  std::string address_;
  exchange::Dice dice_;
  bool has_heartbeat_;
  bool calm_ = false;
  std::list<Session> sessions_;
  const Session* registered_last_ = nullptr;
  int frames_sent_ = 0;

  std::array<Studio, studio_count> studios_;
  std::vector<std::string> groups_{"Morning", "Late Show", "Sport"};
  int names_made_ = 0;
};

}  // namespace lineweir::simulation
