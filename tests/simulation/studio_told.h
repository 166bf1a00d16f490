#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "server/server.h"
#include "simulation/seat.h"
#include "wire/server_packet_codec.h"

namespace lineweir::simulation {

// What a seat of a group that comes in anew is told: the truth.
struct StudioTold {
  std::string letters = {};
  std::array<std::optional<CallerDetails>, 10> data = {};
  int next_call = -1;
  std::string message = {};
  // How long the clock of each line has run, in seconds; nothing where none does.
  std::vector<std::optional<int>> clocks = {};
};

// Asks the server; time passes.
StudioTold ask_studio(platform::VirtualEventLoop& loop, server::Server& server,
                      const std::string& user, const std::string& password, int group);

// By line, how long its clock has run.
std::vector<std::optional<int>> clocks_of(const ServerPacket& times);

// By line, who works it, as an administrator is told. Time passes.
std::vector<std::string> workers_told(platform::VirtualEventLoop& loop, server::Server& server,
                                      int group);

// What a console shows that is not as it was told, each as a sentence. `rows_compared` grows.
std::vector<std::string> differences(Seat& seat, const StudioTold& told, long& rows_compared);

}  // namespace lineweir::simulation
