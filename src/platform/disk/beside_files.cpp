#include "platform/disk/beside_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <sstream>
#include <string>

namespace lineweir::platform {
namespace {

namespace fs = std::filesystem;

constexpr const char* log_ending = "-wal";
constexpr const char* index_ending = "-shm";

fs::path beside(const fs::path& name, const char* ending) {
  fs::path file = name;
  file += ending;
  return file;
}

DiskIdentity identity_in(const struct stat& status) { return {status.st_dev, status.st_ino}; }

// What has become of a file that this process has open.
struct Whereabouts {
  bool deleted = false;
  std::optional<fs::path> name;
};

// Found by the process's handles, since a file doesn't know its name. A handle that is opened for
// it would end the engine's locks when it is closed.
Whereabouts whereabouts(DiskIdentity file) {
  Whereabouts found;
  std::error_code error;
  for (fs::directory_iterator handle("/proc/self/fd", error); !error && handle != end(handle);
       handle.increment(error)) {
    struct stat status {};
    if (::stat(handle->path().c_str(), &status) != 0 || identity_in(status) != file) continue;
    found.deleted = status.st_nlink == 0;
    std::error_code no_link;
    const fs::path name = fs::read_symlink(handle->path(), no_link);
    if (!no_link && disk_identity(name) == file) found.name = name;
    break;
  }
  return found;
}

// A name for a database whose own one isn't known, beside which nothing lies.
fs::path free_name(const fs::path& name) {
  for (int number = 1;; ++number) {
    const fs::path free = beside(name, (".former-" + std::to_string(number)).c_str());
    if (!disk_identity(beside(free, log_ending)) && !disk_identity(beside(free, index_ending))) {
      return free;
    }
  }
}

// Written on a "-wal" for later runs of the program: the database that it belongs to, and the
// "-wal" itself, since a copy of both has other numbers and what was written on it is void. Where
// the file system has no room for such a note there is none.
constexpr const char* owner_attribute = "user.lineweir.database";

std::string owner_text(DiskIdentity database, DiskIdentity log) {
  std::ostringstream text;
  for (const DiskIdentity& file : {database, log}) text << file.first << ' ' << file.second << ' ';
  return text.str();
}

void write_owner(const fs::path& log_name, DiskIdentity database, DiskIdentity log) {
  const std::string text = owner_text(database, log);
  ::setxattr(log_name.c_str(), owner_attribute, text.data(), text.size(), 0);
}

// Whether another database than this one has left the "-wal" that lies beside it.
bool left_by_another(const fs::path& log_name, DiskIdentity database, DiskIdentity log) {
  std::string text(256, '\0');
  const auto size = ::getxattr(log_name.c_str(), owner_attribute, text.data(), text.size());
  if (size <= 0) return false;
  std::istringstream words(text.substr(0, static_cast<std::size_t>(size)));
  DiskIdentity owner;
  DiskIdentity written_on;
  words >> owner.first >> owner.second >> written_on.first >> written_on.second;
  return words && written_on == log && owner != database;
}

bool rename_to_free(const fs::path& from, const fs::path& to) {
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  // Not every file system can do it in one step.
  return errno == EINVAL && !disk_identity(to) && ::rename(from.c_str(), to.c_str()) == 0;
}

bool move_file(const fs::path& from, const fs::path& to, DiskIdentity file) {
  if (!rename_to_free(from, to)) return disk_identity(from) != file;
  // Another program has set it aside in between, and this was the new database's.
  if (disk_identity(to) != file) rename_to_free(to, from);
  return true;
}

}  // namespace

std::optional<DiskIdentity> disk_identity(const fs::path& file) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) return std::nullopt;
  return identity_in(status);
}

void BesideFiles::enter(const fs::path& name, DiskIdentity database) {
  const std::lock_guard lock(mutex_);
  const auto found = std::ranges::find_if(
      known_, [&](const Known& known) { return known.name == name && known.database == database; });
  if (found == known_.end()) {
    known_.push_back({name, database, {}, {}, 1});
  } else {
    ++found->opened;
  }
}

void BesideFiles::leave(const fs::path& name, DiskIdentity database) {
  const std::lock_guard lock(mutex_);
  std::erase_if(known_, [&](Known& known) {
    return known.name == name && known.database == database && --known.opened == 0;
  });
}

void BesideFiles::note(const fs::path& name, DiskIdentity database) {
  if (disk_identity(name) != database) return;
  const auto log = disk_identity(beside(name, log_ending));
  const auto index = disk_identity(beside(name, index_ending));
  // Otherwise they may be another one's already.
  if (disk_identity(name) != database) return;
  const std::lock_guard lock(mutex_);
  for (Known& known : known_) {
    if (known.name != name || known.database != database) continue;
    if (log && known.log != log) write_owner(beside(name, log_ending), database, *log);
    known.log = log;
    known.index = index;
  }
}

bool BesideFiles::set_aside(const fs::path& name) {
  const std::lock_guard lock(mutex_);
  const auto present = disk_identity(name);
  bool moved = true;
  for (Known& known : known_) {
    if (known.name != name || known.database == present) continue;
    if (!present && known.opened > 1) continue;
    moved = move_away(known) && moved;
  }
  return (!present || move_left(name, *present)) && moved;
}

bool BesideFiles::move_left(const fs::path& name, DiskIdentity database) {
  const fs::path log_name = beside(name, log_ending);
  const auto log = disk_identity(log_name);
  if (!log || !left_by_another(log_name, database, *log)) return true;
  const fs::path to = free_name(name);
  const auto index = disk_identity(beside(name, index_ending));
  const bool moved = move_file(log_name, beside(to, log_ending), *log);
  return (!index || move_file(beside(name, index_ending), beside(to, index_ending), *index)) &&
         moved;
}

bool BesideFiles::move_away(const Known& known) {
  const fs::path log = beside(known.name, log_ending);
  const fs::path index = beside(known.name, index_ending);
  const bool log_there = known.log && disk_identity(log) == known.log;
  const bool index_there = known.index && disk_identity(index) == known.index;
  if (!log_there && !index_there) return true;
  const Whereabouts database = whereabouts(known.database);
  if (database.deleted) {
    const bool log_gone = !log_there || ::unlink(log.c_str()) == 0 || errno == ENOENT;
    return (!index_there || ::unlink(index.c_str()) == 0 || errno == ENOENT) && log_gone;
  }
  fs::path to = database.name.value_or(known.name);
  if (!database.name || disk_identity(beside(to, log_ending)) ||
      disk_identity(beside(to, index_ending))) {
    to = free_name(known.name);
  }
  const bool log_moved = !log_there || move_file(log, beside(to, log_ending), *known.log);
  return (!index_there || move_file(index, beside(to, index_ending), *known.index)) && log_moved;
}

}  // namespace lineweir::platform
