#pragma once

#include <filesystem>

#include "platform/disk/guarded_files.h"
#include "platform/sqlite/connection.h"

namespace lineweir::platform {

// A connection to the file of a name, which never takes what belongs to another file that had the
// name before, nor leaves anything of its own to one that has it afterwards.
class OpenFile {
 public:
  // The wait and the guard must outlive this object.
  OpenFile(const std::filesystem::path& file, const LockWait& lock_wait, GuardedFiles& guard);
  ~OpenFile();
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  sqlite3* get() const { return connection_.get(); }
  DiskIdentity identity() const { return identity_; }

  // Whether the file still lies under its name.
  bool in_place() const { return disk_identity(name_) == identity_; }
  // A Failure of number 3024 where the file isn't there any more under its name.
  void require_in_place() const;

  // To be called after what may have made files beside this one.
  void note_beside() { guard_.beside().note(name_, identity_); }

 private:
  // Makes the file known to the guard for as long as it is open.
  class Known {
   public:
    Known(GuardedFiles& guard, const std::filesystem::path& name, DiskIdentity file);
    ~Known();
    Known(const Known&) = delete;
    Known& operator=(const Known&) = delete;

   private:
    GuardedFiles& guard_;
    const std::filesystem::path& name_;
    DiskIdentity file_;
  };

  GuardedFiles& guard_;
  // Without links, as SQLite names what lies beside.
  std::filesystem::path name_;
  DiskIdentity identity_;
  Known known_;
  Connection connection_;
};

}  // namespace lineweir::platform
