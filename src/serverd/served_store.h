#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/asio/asio_descriptor_watch.h"
#include "platform/postgres_store/database_lease.h"
#include "platform/postgres_store/database_lock.h"
#include "platform/sqlite_store/store_file_lock.h"
#include "platform/store.h"
#include "server/server_log.h"
#include "serverd/configuration.h"

namespace lineweir::serverd {

// The store that a configuration names, which no other server works on meanwhile.
class ServedStore {
 public:
  // The loop and the log outlive this object.
  ServedStore(const Configuration& configuration, platform::AsioLoop& loop,
              const server::ServerLog& log);

  platform::Store& store() { return *store_; }

  // Keeps other servers off: `held` is called, once and from the loop, when it is so. A database
  // that isn't there yet is waited for. Where another server has the store a std::runtime_error in
  // one sentence is thrown, or the sentence told to `refused`.
  void lock(std::function<void()> held, std::function<void(const std::string& why)> refused);

  // Where several servers share the store, what decides which of them serves, in the place of
  // lock(); null otherwise.
  platform::Lease* lease() { return lease_.get(); }
  // The store is from now on that of the epoch's leader. The former one is gone, with what it was
  // asked.
  void lead(platform::Epoch epoch);

 private:
  void lock_file(std::function<void()> held);
  void lock_database(std::function<void()> held,
                     std::function<void(const std::string& why)> refused);
  void open_database(platform::Epoch epoch);

  platform::AsioLoop& loop_;
  const server::ServerLog& log_;
  std::string file_;
  std::optional<platform::PostgresAddress> database_;
  std::vector<int> groups_;
  std::unique_ptr<platform::AsioDescriptorWatch> store_watch_;
  platform::AsioDescriptorWatch lock_watch_;
  std::unique_ptr<platform::Store> store_;
  std::optional<platform::StoreFileLock> file_lock_;
  std::optional<platform::DatabaseLock> database_lock_;
  std::unique_ptr<platform::DatabaseLease> lease_;
  std::string trouble_;
  bool was_held_ = false;
};

}  // namespace lineweir::serverd
