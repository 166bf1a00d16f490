#pragma once

#include <chrono>
#include <filesystem>

#include "letters/letters.h"
#include "platform/database.h"
#include "platform/disk/guarded_files.h"
#include "platform/sqlite/sqlite_database.h"

namespace lineweir::platform {

// Databases in SQLite files, whatever the files' extensions. Several programs may use a file at the
// same time. Paths may be relative to a working directory that never changes, and their letters of
// any case.
class SqliteEngine final : public DatabaseEngine {
 public:
  // Paths are texts in the letters. Without a wait whatever finds a file locked fails at once. The
  // wait blocks the thread: the one on which the handlers run has none. What is open is guarded
  // against other hands of this process. Letters and guard must outlive the engine, and that its
  // databases.
  explicit SqliteEngine(const std::filesystem::path& working_directory,
                        const Letters& letters = utf8_letters(),
                        std::chrono::milliseconds lock_wait = std::chrono::milliseconds::zero(),
                        GuardedFiles* guard = nullptr, BatchWork batch_work = BatchWork::OnThreads);

  std::unique_ptr<Database> open(const std::string& path) override;
  std::unique_ptr<Database> create(const std::string& path) override;
  bool is_database(const std::string& path) override;

 private:
  std::filesystem::path locate(const std::string& path) const;
  // Null where the file isn't a database, or has a table.
  std::unique_ptr<Database> left_unfinished(const std::filesystem::path& file);

  std::filesystem::path working_directory_;
  const Letters& letters_;
  std::chrono::milliseconds lock_wait_;
  // Where none is given.
  GuardedFiles own_guard_;
  GuardedFiles& guard_;
  BatchWork batch_work_;
};

}  // namespace lineweir::platform
