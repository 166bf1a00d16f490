#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/console.h"
#include "exchange/dice.h"
#include "platform/scripted/scripted_platform.h"
#include "simulation/network_socket.h"
#include "simulation/transcript.h"

namespace lineweir::simulation {

// Chance as a console asks for it.
class Chance final : public platform::RandomNumbers {
 public:
  explicit Chance(std::uint64_t seed) : dice_(seed) {}
  double next() override { return dice_.fraction(); }

 private:
  exchange::Dice dice_;
};

enum class SeatLink { SerialBox, Server };

inline constexpr const char* server_host = "studio-server";
inline constexpr int server_port = 2001;

// What the settings of a workstation say of who sits there.
struct SeatIdentity {
  std::string user = {};
  std::string password = {};
  int group = 1;
  // As the user has typed it.
  std::string servers = server_host;
};

// One workstation of the studio and the console on it, which may end and begin again. Its files and
// its call log last.
class Seat {
 public:
  // Loop, network and transcript outlive the seat. Numbers begin with 0.
  Seat(platform::VirtualEventLoop& loop, Network& network, Transcript& transcript, int number,
       SeatLink link, std::uint64_t seed, SeatIdentity identity = {});
  Seat(const Seat&) = delete;
  Seat& operator=(const Seat&) = delete;

  // All three must be called from no handler. The start waits for box or server, and time passes.
  // With its trace on a console waits longer, and its failures are known.
  void start(std::string_view command_line = "D");
  void lose_power();
  // Takes a console away whose user has ended it; returns whether there was one.
  bool take_away_ended();

  bool running() const { return started_; }
  Console& console() { return *console_; }
  const std::string& name() const { return name_; }
  int number() const { return number_; }
  const std::string& password() const { return identity_.password; }
  SeatLink link() const { return link_; }
  platform::ScriptedSerialPort& port() { return workstation_.comm1; }
  const NetworkSocket& socket() const { return socket_; }

  // The console's way to the studio stands, as it sees it.
  bool linked() { return running() && console_->Lineweir.no_link.get().empty(); }

  // Something that the user does by hand, as one line of the transcript.
  void note(std::string_view what) { transcript_.add(name_, what); }

  // Names of callers that this seat has entered and saved, in their order.
  std::vector<std::string> entered;
  // How often each caller name stands in the seat's call log.
  std::map<std::string, int> logged() const;

  // What the trace reported of handlers that failed.
  const std::vector<std::string>& failures() const { return failures_; }

 private:
  platform::Services services();
  std::string first_settings() const;
  void remove_console();

  Transcript& transcript_;
  std::string name_;
  int number_;
  SeatLink link_;
  SeatIdentity identity_;
  platform::ScriptedPlatform workstation_;
  Chance chance_;
  NetworkSocket socket_;
  std::vector<std::string> failures_;
  bool started_ = false;
  std::optional<Console> console_;
};

}  // namespace lineweir::simulation
