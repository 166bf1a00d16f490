#include "platform/sqlite_store/sync_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include "platform/disk/file_descriptor.h"

namespace lineweir::platform {

void sync_folder_of(const std::filesystem::path& file) {
  const auto folder = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
  const FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened.is_open()) ::fsync(opened.get());
}

}  // namespace lineweir::platform
