#pragma once

#include <cstdint>
#include <string>

#include "base/allowance.h"
#include "platform/wall_clock.h"
#include "server/own_names.h"
#include "server/refusal.h"
#include "server/telling.h"

namespace lineweir::server {

// Somebody who has been let in: a console on a socket, or a program that holds the remote objects.
class Seat {
 public:
  explicit Seat(std::uint64_t seat_number) : number(seat_number) {}
  virtual ~Seat() = default;
  Seat(const Seat&) = delete;
  Seat& operator=(const Seat&) = delete;

  // Never waits, and never runs anything of the group from within.
  virtual void tell(const Telling& telling) = 0;
  // A sentence for the person at the seat, in UTF-8. Nothing where the seat has no way to show it.
  virtual void tell_person(const std::string& text) = 0;
  // The seat's connection ends, behind what was told.
  virtual void end() = 0;
  // Where it is: an address, or a name on the bus.
  virtual std::string place() const = 0;

  // Unique, never used again.
  const std::uint64_t number;
  // UTF-8; empty until it is let in.
  std::string user;
  // 0 while it is registered in none.
  int group = 0;
  int console = 0;
  bool screener = false;
  // In the group where it is registered.
  std::string rights;
  platform::Moment since{0};
  // It has the status of all lines, so that changes alone do.
  bool told_status = false;
  OwnNames own_names;
  // Its share of an exchange that is held up.
  Allowance words{20, 10, std::chrono::milliseconds{0}};
};

}  // namespace lineweir::server
