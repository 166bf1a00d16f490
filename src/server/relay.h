#pragma once

#include <functional>
#include <vector>

#include "server/seat.h"

namespace lineweir::server {

// The seats that are registered in a group. All are told the same, in the same order.
class Relay {
 public:
  void join(Seat& seat) { seats_.push_back(&seat); }
  void leave(Seat& seat) { std::erase(seats_, &seat); }

  const std::vector<Seat*>& seats() const { return seats_; }

  void tell(const ServerPacket& packet) const {
    if (seats_.empty()) return;
    const Telling telling(packet);
    for (Seat* seat : seats_) seat->tell(telling);
  }

 private:
  std::vector<Seat*> seats_;
};

}  // namespace lineweir::server
