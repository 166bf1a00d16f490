#include "platform/disk/replace_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

#include "platform/disk/file_descriptor.h"

namespace lineweir::platform {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(int error) { throw std::system_error(error, std::generic_category()); }

// Removes the file unless it was given its final name.
class NewFile {
 public:
  explicit NewFile(fs::path path) : path_(std::move(path)) {}
  ~NewFile() {
    if (!path_.empty()) ::unlink(path_.c_str());
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  void rename_to(const fs::path& target) {
    if (::rename(path_.c_str(), target.c_str()) != 0) fail(errno);
    path_.clear();
  }

 private:
  fs::path path_;
};

fs::path without_links(const fs::path& path) {
  std::error_code error;
  fs::path real = fs::canonical(path, error);
  return error ? path : real;
}

// Renaming would go through where writing may not: over a file that is read-only, and over things
// that aren't files. Gives the permissions of the present file, or nothing when there is none.
bool check_present_file(const fs::path& path, mode_t& permissions) {
  struct stat present {};
  if (::stat(path.c_str(), &present) != 0) {
    if (errno != ENOENT) fail(errno);
    return false;
  }
  if (S_ISDIR(present.st_mode)) fail(EISDIR);
  if (!S_ISREG(present.st_mode)) fail(EINVAL);
  if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) fail(errno);
  permissions = present.st_mode & 07777;
  return true;
}

// Makes the new name itself safe. An error is passed over: the new content already stands under the
// name, and after a crash the old one may stand there, which is whole too.
void flush_directory(const fs::path& directory) {
  const FileDescriptor file(::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (file.is_open()) ::fsync(file.get());
}

}  // namespace

void write_whole(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const ssize_t written = ::write(descriptor, content.data(), content.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      fail(errno);
    }
    content.remove_prefix(static_cast<std::size_t>(written));
  }
}

void replace_file(const fs::path& path, std::string_view content) {
  const fs::path target = without_links(path);
  mode_t permissions = 0;
  const bool keep_permissions = check_present_file(target, permissions);

  const fs::path beside = target.string() + "." + std::to_string(::getpid()) + ".new";
  FileDescriptor file(
      ::open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0666));
  if (!file.is_open()) fail(errno);
  NewFile new_file(beside);

  if (keep_permissions && ::fchmod(file.get(), permissions) != 0) fail(errno);
  write_whole(file.get(), content);
  if (::fsync(file.get()) != 0) fail(errno);
  if (!file.close()) fail(errno);
  new_file.rename_to(target);
  flush_directory(target.parent_path());
}

}  // namespace lineweir::platform
