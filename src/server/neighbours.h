#pragma once

#include <functional>
#include <string>
#include <vector>

#include "server/accounts.h"
#include "server/caller_memory.h"
#include "server/server_options.h"
#include "server/studio_places.h"

namespace lineweir::server {

// The other servers of one store: what they write comes to this one's seats, and each knows where
// the others' groups are.
class Neighbours {
 public:
  // What becomes of this server's seats. Names and sentences are UTF-8.
  struct Seats {
    std::function<void(const std::string& user)> tell_new_rights;
    std::function<void(const std::string& user, const std::string& why)> end;
    std::function<void()> tell_groups;
  };

  Neighbours(Accounts& accounts, CallerMemory& memory, StoreOutbox& outbox, Seats seats)
      : accounts_(accounts), memory_(memory), outbox_(outbox), seats_(std::move(seats)) {}

  const StudioPlaces& places() const { return places_; }

  void take_over(std::vector<platform::StudioPlace> places) {
    places_.take_over(std::move(places));
  }
  void take(const platform::StoreNews& news);
  // Tells where the groups of this server are, where that is known, and that others are no longer
  // where it is.
  void tell_places(const ServerOptions& options);

 private:
  void tell(const platform::StudioPlace& place);

  Accounts& accounts_;
  CallerMemory& memory_;
  StoreOutbox& outbox_;
  Seats seats_;
  StudioPlaces places_;
};

}  // namespace lineweir::server
