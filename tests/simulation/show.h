#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "simulation/operator.h"
#include "simulation/seat.h"
#include "simulation/witness.h"

// A whole studio in one process and in virtual time: consoles at their seats with people who press
// and type at random, the telephone exchange with callers who come and go, a stand-in for the
// server, and a network that delays, stalls, refuses and cuts.
//
// All chance follows one seed, and nothing asks for real time: a seed gives the same transcript on
// every run, to the byte, and so a fault that was found once is found again. The parts:
//
// - Show puts it all together, and makes ports vanish and seats lose their power.
// - EquipmentRoom is the exchange with an interface box, on a serial line, for each seat that has
//   one.
// - Network listens, connects, carries bytes both ways, closes.
// - ServerStandIn is the server as far as a console speaks with one.
// - Seat is a workstation with a console, its files and its call log.
// - Operator is who sits there.
// - Witness looks after each step whether all can be right, and writes down what can't.
// - Transcript tells what has happened.
namespace lineweir::simulation {

struct ShowOptions {
  std::uint64_t seed = 1;
  int seats_at_boxes = 2;
  int seats_at_server = 2;
  Weather weather = {};
};

class Show {
 public:
  explicit Show(const ShowOptions& options);
  ~Show();
  Show(const Show&) = delete;
  Show& operator=(const Show&) = delete;

  // Lets that much time of the show pass, and a little more where somebody waits at the end.
  void run(Milliseconds length);

  const std::string& transcript() const { return transcript_.text(); }
  const Witness& witness() const { return witness_; }
  const ServerStandIn& server() const { return server_; }

 private:
  // When the next thing befalls a seat.
  struct Fate {
    Milliseconds next{0};
    Milliseconds no_link_since{0};
    Milliseconds starts_at{0};
  };

  void let_operator_act(std::size_t seat);
  void befall(Seat& seat, Operator& operator_, Fate& fate);
  void tend(Seat& seat, Operator& operator_, Fate& fate);

  platform::VirtualEventLoop loop_;
  Transcript transcript_{loop_};
  exchange::Dice dice_;
  Network network_;
  EquipmentRoom room_;
  ServerStandIn server_;
  std::vector<std::unique_ptr<Seat>> seats_;
  std::vector<std::unique_ptr<Operator>> operators_;
  std::vector<Fate> fates_;
  Witness witness_;
};

}  // namespace lineweir::simulation
