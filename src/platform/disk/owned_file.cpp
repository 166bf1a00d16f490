#include "platform/disk/owned_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace lineweir::platform {
namespace {

constexpr int common_flags = O_RDWR | O_NOFOLLOW | O_CLOEXEC;

[[noreturn]] void fail_with(int error) { throw std::system_error(error, std::generic_category()); }

bool lock(const FileDescriptor& file) { return ::flock(file.get(), LOCK_EX | LOCK_NB) == 0; }

}  // namespace

OwnedFile make_owned_file(const std::filesystem::path& path, int flags) {
  FileDescriptor file(::open(path.c_str(), common_flags | O_CREAT | O_EXCL | flags, 0600));
  if (!file.is_open()) fail_with(errno);
  if (!lock(file)) {
    const int error = errno;
    // Whoever adopted the file in the meantime has it.
    if (error != EWOULDBLOCK) ::unlink(path.c_str());
    fail_with(error);
  }
  if (!is_named(path, file)) fail_with(EWOULDBLOCK);
  return {std::move(file), 0};
}

std::optional<OwnedFile> adopt_file(const std::filesystem::path& path, int flags) {
  FileDescriptor file(::open(path.c_str(), common_flags | O_NONBLOCK | flags));
  struct stat status {};
  // Its process may have removed or replaced it before it let it go.
  if (!file.is_open() || !lock(file) || !is_named(path, file) ||
      ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  return OwnedFile{std::move(file), static_cast<std::size_t>(status.st_size)};
}

bool is_named(const std::filesystem::path& path, const FileDescriptor& file) {
  struct stat open {};
  struct stat named {};
  return ::fstat(file.get(), &open) == 0 && ::lstat(path.c_str(), &named) == 0 &&
         open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

std::string content_of(const FileDescriptor& file, std::size_t size) {
  std::string content(size, '\0');
  std::size_t read = 0;
  while (read < size) {
    const ssize_t count =
        ::pread(file.get(), content.data() + read, size - read, static_cast<off_t>(read));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) fail_with(errno);
    if (count == 0) break;
    read += static_cast<std::size_t>(count);
  }
  content.resize(read);
  return content;
}

}  // namespace lineweir::platform
