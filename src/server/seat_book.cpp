#include "server/seat_book.h"

#include "server/caller_text.h"

namespace lineweir::server {
namespace {

constexpr std::size_t longest_seat_name = 60;

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
  Group* const group = find_group(seat.group);
  if (group == nullptr) return;
  if (leaving == Leaving::Vanished) {
    vanished_.push_back(
        {seat.number, seat.user, seat.group, seat.console, context_.loop.now() + silence_allowed});
  }
  leave_group(seat);
  if (leaving == Leaving::Silent) group->lines().hold_handset(seat.number);
}

void SeatBook::join(Seat& seat, Group& group) {
  leave_group(seat);
  for (auto vanished = vanished_.begin(); vanished != vanished_.end();) {
    const bool same_place = vanished->group == group.number() && vanished->user == seat.user &&
                            vanished->console == seat.console;
    if (!same_place) {
      ++vanished;
      continue;
    }
    group.lines().pass_handset(vanished->number, seat.number);
    vanished = vanished_.erase(vanished);
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
    if (Group* group = find_group(vanished.group)) group->lines().hold_handset(vanished.number);
  }
  for (const auto& [number, group] : groups_) group->lines().hold_unclaimed();
}

Group* SeatBook::find_group(int number) const {
  const auto group = groups_.find(number);
  return group == groups_.end() ? nullptr : group->second.get();
}

}  // namespace lineweir::server
