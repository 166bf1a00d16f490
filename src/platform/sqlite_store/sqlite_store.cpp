#include "platform/sqlite_store/sqlite_store.h"

#include <utility>

#include "base/failure.h"
#include "platform/sqlite_store/audit_rows.h"
#include "platform/sqlite_store/call_rows.h"
#include "platform/sqlite_store/caller_rows.h"
#include "platform/sqlite_store/store_copy.h"
#include "platform/sqlite_store/store_rows.h"
#include "platform/sqlite_store/store_worker.h"

namespace lineweir::platform {

SqliteStore::SqliteStore(std::filesystem::path file, Poster& poster,
                         std::chrono::milliseconds lock_wait)
    : poster_(poster), here_(std::make_shared<SqliteStore*>(this)) {
  const auto tell_trouble = [&to = poster_, here = std::weak_ptr(here_)](std::string trouble) {
    to.post([here, trouble = std::move(trouble)] {
      const auto store = here.lock();
      if (store && (*store)->on_trouble) (*store)->on_trouble(trouble);
    });
  };
  worker_ = std::make_unique<StoreWorker>(std::move(file), lock_wait, tell_trouble);
}

SqliteStore::~SqliteStore() = default;

// What is to be told is moved to the loop, never copied: its last part must not go in the thread.
std::function<void(std::function<void()> call)> SqliteStore::teller() {
  ++waiting_;
  return [&poster = poster_, here = std::weak_ptr(here_)](std::function<void()> call) {
    poster.post([here, call = std::move(call)] {
      const auto store = here.lock();
      if (!store) return;
      --(*store)->waiting_;
      call();
    });
  };
}

template <class Answer>
void SqliteStore::ask(std::function<Answer(sqlite3*)> read,
                      std::function<void(std::optional<Answer>)> done) {
  const auto answer = std::make_shared<std::optional<Answer>>();
  worker_->use(
      [read = std::move(read), answer](StoreFile& file) { *answer = read(file.ready()); },
      [tell = teller(), done = std::move(done), answer](const std::string& /*failure*/) mutable {
        tell([done = std::move(done), answer] { done(std::move(*answer)); });
      });
}

void SqliteStore::load(std::function<void(std::optional<StoredState> state)> done) {
  ask<StoredState>(read_state, std::move(done));
}

void SqliteStore::write(std::vector<StoreChange> changes, std::function<void(bool written)> done) {
  worker_->write(std::move(changes),
                 [tell = teller(), done = std::move(done)](bool written) mutable {
                   tell([done = std::move(done), written] { done(written); });
                 });
}

void SqliteStore::calls(const CallFilter& filter,
                        std::function<void(std::optional<std::vector<CallRecord>> calls)> done) {
  ask<std::vector<CallRecord>>(
      [filter](sqlite3* connection) { return read_ended_calls(connection, filter); },
      std::move(done));
}

void SqliteStore::audit(const AuditFilter& filter,
                        std::function<void(std::optional<std::vector<AuditEntry>> entries)> done) {
  ask<std::vector<AuditEntry>>(
      [filter](sqlite3* connection) { return read_audit(connection, filter); }, std::move(done));
}

void SqliteStore::caller_history(const std::string& key,
                                 std::function<void(std::optional<CallerHistory> history)> done) {
  ask<CallerHistory>([key](sqlite3* connection) { return read_caller_history(connection, key); },
                     std::move(done));
}

void SqliteStore::forget(Moment before, Forgetting what, std::size_t limit,
                         std::function<void(std::optional<std::size_t> forgotten)> done) {
  ask<std::size_t>(
      [before, what, limit](sqlite3* connection) {
        return forget_calls(connection, before, what, limit);
      },
      std::move(done));
}

void SqliteStore::verify_audit(std::function<void(std::optional<AuditVerdict> verdict)> done) {
  ask<AuditVerdict>(check_audit, std::move(done));
}

void SqliteStore::copy(sqlite3* (StoreFile::*store)(), std::function<void(sqlite3*)> action,
                       std::function<void(std::string failure)> done) {
  const auto failed = std::make_shared<std::string>();
  worker_->use(
      [store, action = std::move(action), failed](StoreFile& file) {
        sqlite3* connection = (file.*store)();
        // The store itself is well where only the other file isn't.
        try {
          action(connection);
        } catch (const Failure& failure) {
          *failed = failure.what();
        }
      },
      [tell = teller(), done = std::move(done), failed](const std::string& failure) mutable {
        tell([done = std::move(done), text = failed->empty() ? failure : *failed] { done(text); });
      });
}

void SqliteStore::backup(const std::string& file, std::function<void(std::string failure)> done) {
  copy(
      &StoreFile::open_one, [file](sqlite3* connection) { copy_to_new_file(connection, file); },
      std::move(done));
}

void SqliteStore::restore(const std::string& file, std::function<void(std::string failure)> done) {
  copy(
      &StoreFile::ready, [file](sqlite3* connection) { take_over_copy(connection, file); },
      std::move(done));
}

std::size_t SqliteStore::waiting() const { return waiting_; }

}  // namespace lineweir::platform
