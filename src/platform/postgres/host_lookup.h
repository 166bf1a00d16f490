#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/poster.h"
#include "platform/postgres/postgres_address.h"

namespace lineweir::platform {

// Finds the addresses of hosts by their names, in a thread: the system waits for half a minute
// where nobody answers. Nobody waits for that thread, also not at the end of the program.
class HostLookup {
 public:
  // Each host with an address, several times where it has several, and the folders as they stand;
  // where none is left, why as a sentence.
  using Found = std::function<void(std::vector<PostgresHost> hosts, std::string failure)>;

  // The poster outlives this object.
  explicit HostLookup(Poster& poster);
  ~HostLookup();
  HostLookup(const HostLookup&) = delete;
  HostLookup& operator=(const HostLookup&) = delete;

  // Told from the loop. Where a search for the same hosts still runs its outcome is waited for; who
  // asked before is told nothing any more.
  void find(const std::vector<PostgresHost>& hosts, Found found);
  // Nobody is told.
  void forget();

 private:
  struct Desk;

  std::shared_ptr<Desk> desk_;
};

}  // namespace lineweir::platform
