#pragma once

#include <sqlite3.h>

#include <condition_variable>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/disk_journal/disk_call_journal.h"
#include "platform/sqlite/sqlite_engine.h"
#include "support/listen.h"
#include "temporary_directory.h"

namespace lineweir::test {

// A log of three columns, whose last one the user names.
inline constexpr const char* log_table = "Calls";

inline platform::LoggedCall call_record(const std::string& file, const std::string& name,
                                        const std::string& city = {}) {
  return {file, log_table, {{"Name", name}, {"City", city}, {"", "any"}}, {}};
}

// The thread that calls the journal, as the console's does: it runs what other threads post.
class TestLoop {
 public:
  void post(std::function<void()> call) {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(call));
    wake_.notify_one();
  }

  // Runs what is posted until the condition holds; false when nothing is posted for 20 seconds.
  bool run_until(const std::function<bool()>& condition) {
    while (!condition()) {
      std::function<void()> call;
      {
        std::unique_lock lock(mutex_);
        if (!wake_.wait_for(lock, std::chrono::seconds(20), [&] { return !posted_.empty(); })) {
          return false;
        }
        call = std::move(posted_.front());
        posted_.pop_front();
      }
      call();
    }
    return true;
  }

 private:
  std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<std::function<void()>> posted_;
};

// Where a killed process loses nothing that it handed to the system, and nothing takes long.
inline std::filesystem::path memory_disk() {
  const std::filesystem::path folder = "/dev/shm";
  return std::filesystem::exists(folder) ? folder : std::filesystem::temp_directory_path();
}

// A settings folder with a journal, and logs in it.
struct JournalDesk {
  explicit JournalDesk(const std::filesystem::path& parent = memory_disk()) : folder(parent) {}

  void start() {
    journal = std::make_unique<platform::DiskCallJournal>(platform::DiskCallJournal::Setup{
        folder.path(), memory_disk(),
        [this] {
          return std::make_unique<platform::SqliteEngine>(folder.path(), utf8_letters(),
                                                          std::chrono::milliseconds(50), &guard);
        },
        [this](std::function<void()> call) { loop.post(std::move(call)); }});
    listen(journal->on_replaced, [this](const std::string& file) { replaced.push_back(file); });
  }
  void stop() { journal.reset(); }

  void make_log(const std::string& file = "calls.mdb") const {
    platform::SqliteEngine(folder.path())
        .create(file)
        ->create_table(log_table, {{"Name", 30}, {"City", 20}, {"User", 10}});
  }
  void put(const std::string& name, const std::string& file = "calls.mdb") {
    journal->put(call_record(file, name));
  }

  std::string path(const std::string& file) const { return (folder.path() / file).string(); }

  // What another program reads from a file: the first column of a query's rows.
  std::vector<std::string> query(const std::string& sql,
                                 const std::string& file = "calls.mdb") const {
    sqlite3* connection = nullptr;
    std::vector<std::string> found;
    sqlite3_open_v2(path(file).c_str(), &connection, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_busy_timeout(connection, 5000);
    sqlite3_exec(
        connection, sql.c_str(),
        [](void* rows, int, char** values, char**) {
          static_cast<std::vector<std::string>*>(rows)->emplace_back(
              values[0] == nullptr ? "" : values[0]);
          return 0;
        },
        &found, nullptr);
    sqlite3_close(connection);
    return found;
  }
  std::vector<std::string> names(const std::string& file = "calls.mdb") const {
    return query("SELECT Name FROM Calls ORDER BY rowid", file);
  }

  // The journal's own files.
  std::vector<std::string> journal_files() const {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
      const std::string name = entry.path().filename().string();
      if (name.starts_with("calls-")) found.push_back(name);
    }
    return found;
  }

  TemporaryDirectory folder;
  platform::GuardedFiles guard;
  TestLoop loop;
  std::vector<std::string> replaced;
  std::unique_ptr<platform::DiskCallJournal> journal;
};

}  // namespace lineweir::test
