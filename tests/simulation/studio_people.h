#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "simulation/operator.h"
#include "simulation/seat.h"

namespace lineweir::simulation {

// The people of a studio at their consoles, who work by a seed: lines, callers and messages, and
// what has to be done where a console has lost its server.
class StudioPeople {
 public:
  StudioPeople(platform::VirtualEventLoop& loop, Network& network, Transcript& transcript)
      : loop_(loop), network_(network), transcript_(transcript) {}
  StudioPeople(const StudioPeople&) = delete;
  StudioPeople& operator=(const StudioPeople&) = delete;

  // One more of `count`, at a console of that identity; comes within seconds. What all do is drawn
  // from `dice`, which outlives them, and from the seeds.
  void add(const SeatIdentity& identity, int count, exchange::Dice& dice, std::uint64_t seat_seed,
           std::uint64_t operator_seed);

  const std::vector<std::unique_ptr<Seat>>& seats() const { return seats_; }
  // Their hands do nothing any more but for what a lost server takes.
  void rest() { hands_rest_ = true; }
  bool hands_rest() const { return hands_rest_; }

  void lose_power(std::size_t seat);
  void quit(std::size_t seat);
  // Runs between the steps, when no handler does, so that a console may go and another come.
  void tend();
  // All are there, have a link and have been told all.
  bool are_settled();

 private:
  void let_hands_act(std::size_t seat);
  bool tend_link(Seat& seat);
  bool close_what_is_in_the_way(Seat& seat);
  void write_message(Seat& seat);
  void come_back_later(std::size_t seat);

  platform::VirtualEventLoop& loop_;
  Network& network_;
  Transcript& transcript_;
  exchange::Dice* dice_ = nullptr;
  std::vector<std::unique_ptr<Seat>> seats_;
  std::vector<std::unique_ptr<Operator>> operators_;
  std::vector<Milliseconds> starts_at_;
  std::vector<bool> busy_;
  bool hands_rest_ = false;
  int messages_ = 0;
};

}  // namespace lineweir::simulation
