#pragma once

#include <string>

#include "platform/remote_service.h"
#include "server/seat.h"
#include "server/seat_book.h"

namespace lineweir::server {

// A program that works a group through the published objects, and whose own object is called when
// something changes.
class RemoteClient final : public Seat {
 public:
  // Without an object it is told nothing.
  RemoteClient(std::uint64_t seat_number, std::string caller, int group_number, SeatBook& book,
               platform::RemoteService& service);

  void tell(const Telling& telling) override;
  void tell_person(const std::string&) override {}
  void end() override { object.clear(); }
  std::string place() const override { return caller; }

  const std::string caller;
  // The group that it works, also while it isn't called back.
  const int of_group;
  std::string object;

 private:
  SeatBook& book_;
  platform::RemoteService& service_;
};

}  // namespace lineweir::server
