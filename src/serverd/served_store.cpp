#include "serverd/served_store.h"

#include <utility>

#include "platform/postgres_store/postgres_store.h"
#include "platform/sqlite_store/sqlite_store.h"

namespace lineweir::serverd {

using server::LogLevel;

ServedStore::ServedStore(const Configuration& configuration, platform::AsioLoop& loop,
                         const server::ServerLog& log)
    : loop_(loop),
      log_(log),
      file_(configuration.store_file),
      database_(platform::PostgresAddress::read(configuration.store_database)),
      lock_watch_(loop) {
  for (const server::GroupOptions& group : configuration.server.groups) {
    groups_.push_back(group.number);
  }
  if (!database_) {
    store_ = std::make_unique<platform::SqliteStore>(file_, loop);
    return;
  }
  open_database(0);
  const platform::PostgresConnection::Services services{loop, lock_watch_, loop};
  if (!configuration.standby) {
    database_lock_.emplace(*database_, services, groups_);
    return;
  }
  lease_ = std::make_unique<platform::DatabaseLease>(*database_, services, groups_);
  lease_->on_trouble = [this](const std::string& why) {
    if (!why.empty()) log_(LogLevel::Error, "the store: " + why);
  };
}

void ServedStore::open_database(platform::Epoch epoch) {
  store_.reset();
  store_watch_ = std::make_unique<platform::AsioDescriptorWatch>(loop_);
  store_ = std::make_unique<platform::PostgresStore>(
      *database_, platform::PostgresConnection::Services{loop_, *store_watch_, loop_},
      platform::PostgresConnection::Patience{},
      platform::LedGroups{epoch, static_cast<int>(groups_.size())});
}

void ServedStore::lead(platform::Epoch epoch) { open_database(epoch); }

void ServedStore::lock(std::function<void()> held,
                       std::function<void(const std::string& why)> refused) {
  if (database_lock_) {
    lock_database(std::move(held), std::move(refused));
  } else {
    lock_file(std::move(held));
  }
}

void ServedStore::lock_file(std::function<void()> held) {
  file_lock_.emplace(file_);
  loop_.schedule(platform::Milliseconds{0}, std::move(held));
}

// A lock that is lost while the server works is tried for again, and the show goes on: what the
// store is told of the same trouble is in the log already.
void ServedStore::lock_database(std::function<void()> held,
                                std::function<void(const std::string& why)> refused) {
  database_lock_->on_held = [this, held = std::move(held)] {
    trouble_.clear();
    if (std::exchange(was_held_, true)) return log_(LogLevel::Notice, "the store is locked again");
    held();
  };
  database_lock_->on_refused = [this, refused = std::move(refused)](const std::string& why) {
    if (!was_held_) return refused(why);
    if (std::exchange(trouble_, why) != why) log_(LogLevel::Error, why);
  };
  database_lock_->on_trouble = [this](const std::string& why) {
    if (std::exchange(trouble_, why) == why) return;
    log_(was_held_ ? LogLevel::Debug : LogLevel::Error, "the store: " + why);
  };
  database_lock_->take();
}

}  // namespace lineweir::serverd
