#include "serverlink/server_round.h"

#include <utility>

namespace lineweir {

std::vector<StudioServer> ServerRound::rest() const {
  return {servers_.begin() + static_cast<std::ptrdiff_t>(place()), servers_.end()};
}

bool ServerRound::go_on(std::string why) {
  if (is_last()) {
    failure_of_last_ = std::move(why);
    return false;
  }
  failures_.push_back(std::move(why));
  return true;
}

std::string ServerRound::failures() const {
  std::string text;
  const auto tell = [&](const StudioServer& server, const std::string& why) {
    text += (text.empty() ? "" : "\n") + name_of(server) + ": " + why;
  };
  for (std::size_t i = 0; i < failures_.size(); ++i) tell(servers_[i], failures_[i]);
  if (!failure_of_last_.empty()) tell(servers_.back(), failure_of_last_);
  return text;
}

}  // namespace lineweir
