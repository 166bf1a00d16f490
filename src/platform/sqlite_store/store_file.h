#pragma once

#include <chrono>
#include <filesystem>
#include <optional>

#include "platform/disk/guarded_files.h"
#include "platform/sqlite/open_file.h"

namespace lineweir::platform {

// The store's database, which is opened when it is first used, made where there is none, and opened
// anew after whatever has happened to it. Used by one thread.
class StoreFile {
 public:
  // Another program that has it locked is waited for so long.
  StoreFile(std::filesystem::path file, std::chrono::milliseconds lock_wait);

  // The database at work, with all its tables. A Failure where it can't be had: once it was open,
  // one that is away or empty isn't made anew, since what it held is looked for. Another one that
  // was moved into its place is taken.
  sqlite3* ready();

  // As far as it is open, also where it has been deleted meanwhile: it can still be copied.
  sqlite3* open_one();

  // A Failure where the file that was written to doesn't lie under its name any more, or was
  // emptied or overwritten.
  void require_in_place();

  // It is opened anew when it is next used.
  void let_go() { open_.reset(); }

 private:
  void open();
  void make_where_missing() const;
  void require_content();

  std::filesystem::path file_;
  std::chrono::milliseconds lock_wait_;
  GuardedFiles guard_;
  std::optional<OpenFile> open_;
  bool was_open_ = false;
  // Whoever has written over the file may go on doing so.
  bool overwritten_ = false;
};

}  // namespace lineweir::platform
