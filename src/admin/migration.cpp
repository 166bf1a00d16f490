#include "admin/migration.h"

#include <atomic>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>
#include <system_error>

#include "admin/trouble.h"
#include "platform/postgres_store/database_lock.h"
#include "platform/postgres_store/whole_database.h"
#include "platform/sqlite_store/store_file_lock.h"
#include "platform/sqlite_store/whole_store_file.h"
#include "platform/transfer/store_transfer.h"

namespace lineweir::admin {
namespace {

namespace fs = std::filesystem;
using platform::BlockingSession;
using platform::MissingStore;
using platform::PostgresAddress;

// Whoever doesn't want to wait any more ends the program.
const std::atomic<bool> never = false;

// One of the two.
struct Place {
  std::optional<PostgresAddress> database;
  fs::path file;

  std::string shown() const { return database ? database->shown() : file.string(); }
};

Place place_of(const std::string& text) {
  constexpr std::string_view sqlite = "sqlite:";
  if (text.starts_with(sqlite) && text.size() > sqlite.size()) {
    const fs::path file = fs::absolute(text.substr(sqlite.size())).lexically_normal();
    return {.database = {}, .file = file};
  }
  // It may hold a password, so it isn't shown where it is wrong.
  auto database = PostgresAddress::read(text);
  if (!database) {
    throw Trouble("A store is \"sqlite:\" and a file, or " + std::string(PostgresAddress::form) +
                  ".");
  }
  if (database->options().contains("password")) {
    throw Trouble(
        "Everybody on this machine sees a command line, so a password can't stand there: write it "
        "into a file that PGPASSFILE names, or passfile= in the URL.");
  }
  return {.database = std::move(database), .file = {}};
}

// No server works on the store while this is there.
class KeptOff {
 public:
  KeptOff(const Place& place, MissingStore missing) {
    if (place.database) {
      lock_database(*place.database, missing);
    } else if (missing == MissingStore::Refuse) {
      lock_file(place.file);
    } else {
      require_no_journal(place.file, "it is another store's, move it away");
    }
  }

 private:
  void lock_database(const PostgresAddress& address, MissingStore missing) {
    session_.emplace(address, missing, never);
    if (session_->ask({platform::DatabaseLock::attempt()})[0].truth(0, 0)) return;
    throw Trouble("A server works on the store in " + address.shown() + "; end it first.");
  }
  // A file that is to be made needs none: it gets its name when it is whole.
  void lock_file(const fs::path& file) {
    if (!fs::exists(file)) throw Trouble("There is no file " + file.string() + ".");
    file_.emplace(file.string());
    require_no_journal(file, "start the server once, and end it");
  }
  static void require_no_journal(const fs::path& file, const std::string& remedy) {
    const fs::path waiting = file.string() + ".waiting";
    std::error_code missing;
    const auto size = fs::file_size(waiting, missing);
    if (missing || size == 0) return;
    throw Trouble("In " + waiting.string() + " waits what the store has not taken yet; " + remedy +
                  ".");
  }

  std::optional<BlockingSession> session_;
  std::optional<platform::StoreFileLock> file_;
};

std::unique_ptr<platform::WholeStore> open_whole(const Place& place) {
  if (!place.database) return std::make_unique<platform::WholeStoreFile>(place.file);
  return std::make_unique<platform::WholeDatabase>(*place.database, never);
}

std::unique_ptr<platform::StoreInTheMaking> make_in(const Place& place) {
  if (!place.database) return std::make_unique<platform::NewStoreFile>(place.file);
  return std::make_unique<platform::FilledDatabase>(*place.database,
                                                    platform::FilledDatabase::Before::Empty, never);
}

std::string counted(std::int64_t count, const std::string& one, const std::string& several) {
  return std::to_string(count) + " " + (count == 1 ? one : several);
}

void report(const Place& from, const Place& to, const platform::TransferCounts& counts,
            std::ostream& out) {
  out << "moved from " << from.shown() << " to " << to.shown() << ":\n"
      << "  " << counted(counts.accounts, "user", "users") << '\n'
      << "  " << counted(counts.groups, "studio's memory", "studios' memories") << '\n'
      << "  " << counted(counts.flagged_callers, "flagged caller", "flagged callers") << '\n'
      << "  " << counted(counts.calls, "call", "calls") << '\n'
      << "  " << counted(counts.audit.entries, "entry", "entries") << " of the audit\n"
      << "Each was read again and compared.\n";
  if (from.database) {
    out << "What the server couldn't write before its end waits in its own folder, in "
           "server.waiting: where that isn't empty, start the server on the old store once and "
           "move "
           "it again.\n";
  }
  if (counts.audit.first_wrong != 0) {
    out << "Entry " << counts.audit.first_wrong
        << " of the audit is missing or changed, as it was before.\n";
  } else if (counts.audit.entries != 0) {
    out << "The audit's last hash is " << counts.audit.last_hash << ".\n";
  }
}

}  // namespace

void migrate(const Migration& migration, bool as_json, std::ostream& out) {
  const Place from = place_of(migration.from);
  const Place to = place_of(migration.to);
  const KeptOff from_kept(from, MissingStore::Refuse);
  const KeptOff to_kept(to, MissingStore::Make);
  const auto source = open_whole(from);
  const auto target = make_in(to);
  const auto counts = platform::transfer_store(*source, *target);
  if (!as_json) return report(from, to, counts, out);
  out << nlohmann::json{{"users", counts.accounts},
                        {"groups", counts.groups},
                        {"flagged_callers", counts.flagged_callers},
                        {"calls", counts.calls},
                        {"entries", counts.audit.entries},
                        {"first_wrong", counts.audit.first_wrong},
                        {"last_hash", counts.audit.last_hash}}
             .dump()
      << '\n';
}

}  // namespace lineweir::admin
