#pragma once

#include <filesystem>
#include <mutex>
#include <set>
#include <utility>

#include "platform/disk/beside_files.h"

namespace lineweir::platform {

// The databases that this process has open. A lock on a file belongs to the process, and the system
// ends it as soon as the process closes any handle of the file, so that nobody but the database
// engine may open one: another program would take the database for one that nobody uses, and delete
// what had been written beside it. May be used by several threads.
class GuardedFiles {
 public:
  // The file's device and its number there.
  using Identity = DiskIdentity;

  // Counted: a file is guarded until it has been let go as often as it was guarded.
  void guard(Identity file);
  void let_go(Identity file);

  // Whether that is the file, or one that the engine keeps beside it. Looked at by its name alone.
  bool guarded(const std::filesystem::path& file) const;

  // What lies beside them.
  BesideFiles& beside() { return beside_; }

 private:
  bool holds(const std::filesystem::path& file) const;

  mutable std::mutex mutex_;
  std::multiset<Identity> files_;
  BesideFiles beside_;
};

}  // namespace lineweir::platform
