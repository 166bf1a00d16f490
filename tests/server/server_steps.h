#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "server/server_room.h"
#include "server/table_witness.h"

namespace lineweir::server {

// A server whose consoles, lines, store and configuration do whatever bytes tell: frames and halves
// of frames in any order, before and after a login. After each step every console must know
// nothing but the truth about its own group.
class ServerSteps {
 public:
  // The first bytes of the input are the studio's equipment.
  explicit ServerSteps(std::span<const std::uint8_t> bytes);
  ~ServerSteps();

  // False as soon as something is wrong; `fault` tells what.
  bool play();
  const std::string& fault() const { return fault_; }

 private:
  struct Place {
    std::unique_ptr<FrameConsole> console;
    TableWitness witness;
    // What it is told of callers comes a moment behind the lines.
    platform::Milliseconds knows_callers_from{0};
    // It has sent what takes it out of its group.
    platform::Milliseconds may_leave_until{0};
    // What it sends, cut as the server cuts it.
    ReceiveBuffer sent;
    // The second half of a frame.
    std::string rest;
  };

  void note_leaving(Place& place);
  std::uint8_t next();
  int below(int count) { return next() % count; }
  std::string text();
  static ServerOptions options_of(std::uint8_t byte);

  void take_step();
  void connect(Place& place);
  void log_in(Place& place);
  void send_frame(Place& place, bool whole);
  void send_record(Place& place);
  void send(Place& place, const std::string& bytes);
  void work_exchange();
  void work_store();
  void hear_of_others();
  void reconfigure();
  void note_missing_lines(const ServerOptions& options);
  void restart();

  void look();
  void look_at(Place& place);
  void compare_lines(const Place& place);
  void compare_seats(const Place& place, const Place& other);
  void end();
  void require(bool holds, const char* what);

  std::span<const std::uint8_t> bytes_;
  ServerRoom room_;
  std::vector<Place> places_;
  // By group, the line from 1 that doesn't exist; 0 for none.
  std::map<int, int> missing_;
  std::string fault_;
};

}  // namespace lineweir::server
