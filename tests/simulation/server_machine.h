#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "letters/code_page_letters.h"
#include "platform/scripted/scripted_lease.h"
#include "platform/scripted/scripted_password_hash.h"
#include "platform/scripted/scripted_store_journal.h"
#include "platform/scripted/scripted_wall_clock.h"
#include "server/leadership.h"
#include "server/server.h"
#include "simulation/exchange_link.h"
#include "simulation/network.h"
#include "simulation/seat.h"
#include "simulation/store_link.h"
#include "support/process_loop.h"

namespace lineweir::simulation {

// What the machines of a studio share.
struct StudioGround {
  platform::VirtualEventLoop& world;
  Network& network;
  Transcript& transcript;
  platform::LeaseOffice& office;
  platform::ScriptedStore& store;
  ExchangeRoom& room;
  const server::ServerOptions& options;
};

// One machine of a studio's two, and the server's process on it, which leads or stands by. The
// process can be killed, stopped and cut off; the machine's clock and its journal last.
class ServerMachine {
 public:
  // All of the ground outlives it. `rate`: how fast the machine's clock runs.
  ServerMachine(const StudioGround& ground, std::string name, std::string address, double rate,
                std::uint64_t seed);
  ~ServerMachine();
  ServerMachine(const ServerMachine&) = delete;
  ServerMachine& operator=(const ServerMachine&) = delete;

  // Hear of frames that this machine's server sends and gets, and of its lead; set by the owner.
  std::function<void(ServerMachine& machine, const ServerPacket& packet)> on_sent;
  std::function<void(ServerMachine& machine, const ServerPacket& packet)> on_received;
  std::function<void(ServerMachine& machine)> on_lead_began;

  void start();
  void kill();
  // As by SIGTERM: all is written, and the lease is given back.
  void end_in_order();
  void stop();
  void go_on();

  const std::string& name() const { return name_; }
  const std::string& address() const { return address_; }
  bool is_up() const { return process_ != nullptr; }
  bool is_stopped() const { return loop_.stopped(); }
  // Of the server that serves, or is about to; 0 where none does.
  platform::Epoch epoch() const;
  bool serves() const;
  // It serves, may serve, and reaches all that it needs.
  bool serves_well() const;
  // Whether its process would serve at this moment.
  bool believes_to_lead() const;
  server::Server& server();
  platform::ScriptedWallClock& clock() { return clock_; }

  Cable lease_cable;
  Cable store_cable;
  Cable exchange_cable;
  // Brings the cables to what the process sees of them.
  void plug();

 private:
  class ServerEnd;
  struct Process;

  void lead(platform::Epoch epoch);
  void lose_lead();
  void look_at_proof();

  StudioGround ground_;
  std::string name_;
  std::string address_;
  test::ProcessLoop loop_;
  platform::ScriptedWallClock clock_;
  Chance random_;
  CodePageLetters letters_;
  platform::ScriptedStoreJournal journal_;
  std::unique_ptr<Process> process_;
};

}  // namespace lineweir::simulation
