#pragma once

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace lineweir::platform {

// The device of a file and its number there, by its name alone; nothing where there is no file.
using DiskIdentity = std::pair<std::uint64_t, std::uint64_t>;
std::optional<DiskIdentity> disk_identity(const std::filesystem::path& file);

// What the database engine keeps beside the databases that this process has open, the files "-wal"
// and "-shm". The engine finds them by the database's name: once another database lies in the place
// of one that is open, it would take the former one's for parts of the new one, and write what they
// hold into it. May be used by several threads.
class BesideFiles {
 public:
  // A database is being opened by this name, without links in it, and has been closed again.
  void enter(const std::filesystem::path& name, DiskIdentity database);
  void leave(const std::filesystem::path& name, DiskIdentity database);

  // What lies beside the database belongs to it, if the database still lies there itself.
  void note(const std::filesystem::path& name, DiskIdentity database);

  // If something else lies under the name now than a database that is open, what is left of that
  // one beside it is moved to where that one lies now, or removed where it was deleted. Where
  // nothing lies there it may come back, and its files stay as long as others have it open than the
  // one who asks. What an earlier run has left beside a database that lay there then is moved too.
  // False where files could not be moved; the name must not be opened then.
  bool set_aside(const std::filesystem::path& name);

 private:
  struct Known {
    std::filesystem::path name;
    DiskIdentity database;
    std::optional<DiskIdentity> log;
    std::optional<DiskIdentity> index;
    int opened = 0;
  };

  static bool move_away(const Known& known);
  static bool move_left(const std::filesystem::path& name, DiskIdentity database);

  std::mutex mutex_;
  std::vector<Known> known_;
};

}  // namespace lineweir::platform
