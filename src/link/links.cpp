#include "link/links.h"

#include <algorithm>
#include <utility>

#include "state/console_state.h"
#include "state/settings_record.h"

namespace lineweir {

Links::Links(ConsoleState& state, StudioLink& serial, StudioLink& deciding_server,
             std::vector<Way> ways)
    : state_(state), serial_(serial), deciding_server_(deciding_server), ways_(std::move(ways)) {}

const Way* Links::way_in_use() const {
  const auto found =
      std::ranges::find_if(ways_, [](const Way& way) { return way.item.checked.get(); });
  return found == ways_.end() ? nullptr : &*found;
}

StudioLink& Links::in_use() const {
  const Way* way = way_in_use();
  return way == nullptr ? serial_ : way->link;
}

int Links::settings_code(int wanted) const {
  if (const Way* way = way_in_use()) return way->settings_code;
  const bool missed_way = wanted >= lowest_way_code;
  return state_.Lineweir.chosen_com() != 0 || missed_way ? wanted : connection_none;
}

MenuItem* Links::item_of(int settings_code) const {
  const auto found = std::ranges::find(ways_, settings_code, &Way::settings_code);
  return found == ways_.end() ? nullptr : &found->item;
}

void Links::give_way_to_serial() const {
  for (const Way& way : ways_) way.link.give_way(way.item.checked);
  // A session that has begun and told nothing leaves the restoring pass to come; the box's reports
  // are of calls as they happen.
  state_.lines.FreshConnect = false;
  if (state_.lines.TheNextCall == no_line) state_.lines.NextCallSet = false;
}

void Links::let_go_but(const MenuItem& chosen) const {
  for (const Way& way : ways_) {
    if (&way.item != &chosen && way.item.checked) way.link.let_go();
  }
}

void Links::uncheck_ways(const MenuItem* but) const {
  for (const Way& way : ways_) {
    if (&way.item != but) way.item.checked = false;
  }
}

}  // namespace lineweir
