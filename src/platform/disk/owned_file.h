#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/disk/file_descriptor.h"

namespace lineweir::platform {

// Files that belong to one process at a time. The system's lock on an open handle says whose a file
// is; it ends with the process, however that ends.
struct OwnedFile {
  FileDescriptor descriptor;
  std::size_t size = 0;
};

// A new file that belongs to this process until it is closed. Throws std::system_error, also where
// a file of that name exists or another process was faster. The flags are added to those of open().
OwnedFile make_owned_file(const std::filesystem::path& path, int flags = 0);

// A file that a process left which has ended; nothing where there is none or its process lives.
std::optional<OwnedFile> adopt_file(const std::filesystem::path& path, int flags = 0);

// Whether the name leads to the file that is open, and not to another or to nothing by now.
bool is_named(const std::filesystem::path& path, const FileDescriptor& file);

// The file's first bytes, as many as there are up to the size. Throws std::system_error.
std::string content_of(const FileDescriptor& file, std::size_t size);

}  // namespace lineweir::platform
