#pragma once

#include <chrono>
#include <filesystem>
#include <memory>

#include "platform/poster.h"
#include "platform/store.h"

struct sqlite3;

namespace lineweir::platform {

class StoreFile;
class StoreWorker;

// A store in one SQLite file, which one thread of its own works on. What is written is on the disk
// when that is told. The file is made when it is first used, for its owner alone; other programs
// may read it at any time, and write where they hold it for less than 5 seconds.
//
// A file that is no store, a store of a newer version, a file that is locked, read-only, damaged,
// deleted, or on a full disk: what is asked is told to have failed, the trouble says why, and each
// further call tries anew.
class SqliteStore final : public Store {
 public:
  // The poster outlives this object.
  SqliteStore(std::filesystem::path file, Poster& poster,
              std::chrono::milliseconds lock_wait = std::chrono::seconds(5));
  // What was asked before is done; nobody is told.
  ~SqliteStore() override;
  SqliteStore(const SqliteStore&) = delete;
  SqliteStore& operator=(const SqliteStore&) = delete;

  void load(std::function<void(std::optional<StoredState> state)> done) override;
  void write(std::vector<StoreChange> changes, std::function<void(bool written)> done) override;
  void calls(const CallFilter& filter,
             std::function<void(std::optional<std::vector<CallRecord>> calls)> done) override;
  void audit(const AuditFilter& filter,
             std::function<void(std::optional<std::vector<AuditEntry>> entries)> done) override;
  void caller_history(const std::string& key,
                      std::function<void(std::optional<CallerHistory> history)> done) override;
  void forget(Moment before, Forgetting what, std::size_t limit,
              std::function<void(std::optional<std::size_t> forgotten)> done) override;
  void verify_audit(std::function<void(std::optional<AuditVerdict> verdict)> done) override;
  void backup(const std::string& file, std::function<void(std::string failure)> done) override;
  void restore(const std::string& file, std::function<void(std::string failure)> done) override;
  std::size_t waiting() const override;

 private:
  // Counts what is asked and tells it from the loop.
  std::function<void(std::function<void()> call)> teller();
  template <class Answer>
  void ask(std::function<Answer(sqlite3*)> read, std::function<void(std::optional<Answer>)> done);
  void copy(sqlite3* (StoreFile::*store)(), std::function<void(sqlite3*)> action,
            std::function<void(std::string failure)> done);

  Poster& poster_;
  std::size_t waiting_ = 0;
  // What is told behind the end of this object is told to nobody.
  std::shared_ptr<SqliteStore*> here_;
  std::unique_ptr<StoreWorker> worker_;
};

}  // namespace lineweir::platform
