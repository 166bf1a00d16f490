#include "server/seat_book.h"

#include "server/caller_text.h"

namespace lineweir::server {
namespace {

constexpr std::size_t longest_seat_name = 60;

// Of one user, with one number of the console: where a seat is known again.
template <class Other>
bool is_same_place(const Seat& seat, const Other& other) {
  return seat.user == other.user && seat.console == other.console;
}

}  // namespace

std::vector<std::string> names_of_groups(const Groups& groups, const StudioPlaces& places,
                                         const Letters& letters) {
  std::map<int, std::string> all;
  for (const auto& [number, place] : places.all()) all[number] = place.name;
  for (const auto& [number, group] : groups) all[number] = group->options().name;
  std::vector<std::string> names;
  for (const auto& [number, name] : all) {
    names.resize(static_cast<std::size_t>(number - 1), "-");
    names.push_back(clean_name(letters.from_utf8(name), longest_seat_name));
  }
  return names;
}

void SeatBook::remove(Seat& seat, Leaving leaving) {
  seats_.remove(&seat);
  leave_group(seat);
  if (leaving == Leaving::Goodbye) return;
  // Its callers may be in a group that it has left.
  for (const auto& [number, group] : groups_) {
    if (const auto successor = successor_of(seat, *group)) {
      group->lines().pass_handset(seat.number, *successor);
    } else if (leaving == Leaving::Silent) {
      group->lines().hold_handset(seat.number);
    }
  }
  if (leaving == Leaving::Silent) return;
  vanished_.push_back(
      {seat.number, seat.user, seat.console, context_.loop.now() + silence_allowed});
}

void SeatBook::join(Seat& seat, Group& group) {
  leave_group(seat);
  for (const Vanished& vanished : vanished_) {
    if (is_same_place(seat, vanished)) {
      group.lines().pass_handset(vanished.number, seat.number);
    }
  }
  group.lines().claim_handset(seat);
  group.join(seat);
}

void SeatBook::leave_group(Seat& seat) {
  Group* const group = find_group(seat.group);
  seat.group = 0;
  if (group != nullptr) group->leave(seat);
}

void SeatBook::look_after_vanished() {
  const platform::Milliseconds now = context_.loop.now();
  while (!vanished_.empty() && vanished_.front().until <= now) {
    const Vanished vanished = vanished_.front();
    vanished_.pop_front();
    for (const auto& [number, group] : groups_) group->lines().hold_handset(vanished.number);
  }
  for (const auto& [number, group] : groups_) group->lines().hold_unclaimed();
}

std::optional<std::uint64_t> SeatBook::successor_of(const Seat& seat, const Group& group) const {
  for (const Seat* other : group.seats().seats()) {
    if (other->number > seat.number && is_same_place(seat, *other)) return other->number;
  }
  for (const Vanished& vanished : vanished_) {
    if (vanished.number > seat.number && is_same_place(seat, vanished)) return vanished.number;
  }
  return std::nullopt;
}

Group* SeatBook::find_group(int number) const {
  const auto group = groups_.find(number);
  return group == groups_.end() ? nullptr : group->second.get();
}

}  // namespace lineweir::server
