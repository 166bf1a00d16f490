#pragma once

#include <map>
#include <vector>

#include "platform/store_records.h"

namespace lineweir::server {

// Where the groups of all servers of one store are.
class StudioPlaces {
 public:
  void take_over(std::vector<platform::StudioPlace> places) {
    places_.clear();
    for (platform::StudioPlace& place : places) places_[place.group] = std::move(place);
  }

  void change(const platform::StudioPlace& place) {
    if (place.address.empty()) {
      places_.erase(place.group);
    } else {
      places_[place.group] = place;
    }
  }

  // Null where no server serves the group, or tells where it is.
  const platform::StudioPlace* find(int group) const {
    const auto place = places_.find(group);
    return place == places_.end() ? nullptr : &place->second;
  }
  const std::map<int, platform::StudioPlace>& all() const { return places_; }

 private:
  std::map<int, platform::StudioPlace> places_;
};

}  // namespace lineweir::server
