#pragma once

#include <cstdint>
#include <string>

#include "platform/random_numbers.h"
#include "platform/wall_clock.h"
#include "server/store_outbox.h"

namespace lineweir::server {

// Writes down who did what.
class Audit {
 public:
  Audit(const platform::WallClock& clock, platform::RandomNumbers& random, StoreOutbox& outbox);

  // All UTF-8; `user` is empty for the server itself.
  void note(const std::string& user, const std::string& action, const std::string& detail = {});

 private:
  const platform::WallClock& clock_;
  StoreOutbox& outbox_;
  // In front of the numbers of this run's events.
  std::string run_;
  std::uint64_t noted_ = 0;
};

}  // namespace lineweir::server
