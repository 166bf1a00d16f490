#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "server/context.h"
#include "server/group.h"
#include "server/seat.h"
#include "server/studio_places.h"

namespace lineweir::server {

// The groups by their numbers.
using Groups = std::map<int, std::unique_ptr<Group>>;

// In the consoles' letters, in the order of the numbers from 1: a console finds a group by its
// place. Those of other servers stand there too. Where there is no group of a number stands "-".
std::vector<std::string> names_of_groups(const Groups& groups, const StudioPlaces& places,
                                         const Letters& letters);

// All seats that were let in, and what becomes of one that vanishes: its callers wait for it at the
// handset as long as a silent seat is waited for, and go on hold then, also in a group that it has
// left. Where it has come back before its end was noticed they are its from then on.
class SeatBook {
 public:
  // So long may a seat be silent.
  static constexpr platform::Milliseconds silence_allowed = GroupLines::waited_for;

  SeatBook(const Context& context, Groups& groups) : context_(context), groups_(groups) {}

  std::uint64_t new_number() { return ++last_number_; }

  const std::list<Seat*>& all() const { return seats_; }
  void add(Seat& seat) { seats_.push_back(&seat); }
  // The seat ends. One that has vanished may come back; the callers of one that was silent for too
  // long go on hold at once.
  enum class Leaving { Goodbye, Vanished, Silent };
  void remove(Seat& seat, Leaving leaving);

  // The seat registers in a group, and leaves the one in which it is. It takes over the caller of
  // one that has vanished from the same place of the group.
  void join(Seat& seat, Group& group);
  void leave_group(Seat& seat);

  // Runs each second.
  void look_after_vanished();

  // Of a group, or null.
  Group* find_group(int number) const;

 private:
  struct Vanished {
    std::uint64_t number;
    std::string user;
    int console;
    platform::Milliseconds until;
  };

  // The seat that has come to the same place of the group since, before the end of this one was
  // noticed, or that has vanished from there since.
  std::optional<std::uint64_t> successor_of(const Seat& seat, const Group& group) const;

  const Context& context_;
  Groups& groups_;
  std::uint64_t last_number_ = 0;
  std::list<Seat*> seats_;
  std::list<Vanished> vanished_;
};

}  // namespace lineweir::server
