#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "state/server_addresses.h"

namespace lineweir {

// Once through the servers of a studio: which of them is tried now, and what became of those before
// it.
class ServerRound {
 public:
  // In the order in which they are tried, at least one.
  explicit ServerRound(std::vector<StudioServer> servers) : servers_(std::move(servers)) {}

  const StudioServer& present() const { return servers_[failures_.size()]; }
  std::size_t size() const { return servers_.size(); }
  // Counted from 1.
  std::size_t place() const { return failures_.size() + 1; }
  // Those behind the present one.
  std::vector<StudioServer> rest() const;
  bool is_last() const { return place() >= size(); }

  // The present one is given up, for a reason that is told in a sentence. False where it was the
  // last: then it stays the present one.
  bool go_on(std::string why);

  // A line for each that was given up.
  std::string failures() const;

 private:
  std::vector<StudioServer> servers_;
  std::vector<std::string> failures_;
  std::string failure_of_last_;
};

}  // namespace lineweir
