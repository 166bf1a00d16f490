#pragma once

#include <algorithm>
#include <deque>
#include <string>

#include "base/text.h"

namespace lineweir::server {

// The names under which a seat's console sends caller data, in its letters, trimmed. What comes
// under one of them a console takes for its own and doesn't show. The last ones are enough: a
// console goes by the one that it has now.
class OwnNames {
 public:
  static constexpr std::size_t most = 8;

  void add(std::string_view name) {
    const std::string added(trimmed(name));
    std::erase(names_, added);
    names_.push_back(added);
    if (names_.size() > most) names_.pop_front();
  }
  bool contains(std::string_view name) const {
    return std::find(names_.begin(), names_.end(), trimmed(name)) != names_.end();
  }
  void clear() { names_.clear(); }

 private:
  std::deque<std::string> names_;
};

}  // namespace lineweir::server
