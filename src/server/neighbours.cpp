#include "server/neighbours.h"

#include <algorithm>

namespace lineweir::server {

void Neighbours::take(const platform::StoreNews& news) {
  for (const auto& [user, change] : accounts_.take(news)) {
    switch (change) {
      case Accounts::Change::Rights:
        seats_.tell_new_rights(user);
        break;
      case Accounts::Change::Locked:
        seats_.end(user, "An administrator has locked the user " + user + ".");
        break;
      case Accounts::Change::Removed:
        seats_.end(user, "An administrator has removed the user " + user + ".");
        break;
    }
  }
  if (news.all) {
    memory_.take_over(news.flagged_callers);
    places_.take_over(news.studio_places);
  } else {
    for (const platform::FlaggedCaller& caller : news.flagged_callers) memory_.take(caller);
    for (const platform::StudioPlace& place : news.studio_places) places_.change(place);
  }
  if (news.all || !news.studio_places.empty()) seats_.tell_groups();
}

void Neighbours::tell_places(const ServerOptions& options) {
  for (const GroupOptions& group : options.groups) {
    tell({.group = group.number, .name = group.name, .address = options.address});
  }
  if (options.address.empty()) return;
  const std::map<int, platform::StudioPlace> known = places_.all();
  for (const auto& [number, place] : known) {
    const bool is_own = std::ranges::count(options.groups, number, &GroupOptions::number) > 0;
    if (place.address == options.address && !is_own) tell({.group = number});
  }
}

void Neighbours::tell(const platform::StudioPlace& place) {
  const platform::StudioPlace* const known = places_.find(place.group);
  const bool is_known = known == nullptr ? place.address.empty() : *known == place;
  if (is_known) return;
  places_.change(place);
  outbox_.put(place);
}

}  // namespace lineweir::server
