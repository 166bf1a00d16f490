#include "platform/disk/guarded_files.h"

#include <sys/stat.h>

#include <array>
#include <string>
#include <string_view>

namespace lineweir::platform {

void GuardedFiles::guard(Identity file) {
  const std::lock_guard lock(mutex_);
  files_.insert(file);
}

void GuardedFiles::let_go(Identity file) {
  const std::lock_guard lock(mutex_);
  const auto found = files_.find(file);
  if (found != files_.end()) files_.erase(found);
}

bool GuardedFiles::guarded(const std::filesystem::path& file) const {
  constexpr std::array<std::string_view, 3> beside = {"-wal", "-shm", "-journal"};
  if (holds(file)) return true;
  const std::string name = file.string();
  for (const std::string_view ending : beside) {
    if (name.ends_with(ending) && holds(name.substr(0, name.size() - ending.size()))) return true;
  }
  return false;
}

bool GuardedFiles::holds(const std::filesystem::path& file) const {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) return false;
  const std::lock_guard lock(mutex_);
  return files_.contains({status.st_dev, status.st_ino});
}

}  // namespace lineweir::platform
