#include "platform/disk/replace_file.h"

#include <fcntl.h>
#include <sys/file.h>
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

// A large file goes to the disk bit by bit, so that finishing it takes no long time at once.
constexpr std::size_t most_unflushed = 4 << 20;

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

ReplacingFile::ReplacingFile(const fs::path& path)
    : target_(without_links(path)),
      beside_(target_.string() + "." + std::to_string(::getpid()) + ".new"),
      file_(-1) {
  mode_t permissions = 0;
  const bool keep_permissions = check_present_file(target_, permissions);
  // A program that had this one's number and was killed may have left one. It isn't written on:
  // whoever has it open would read what is written.
  ::unlink(beside_.c_str());
  file_ = FileDescriptor(::open(beside_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
  if (!file_.is_open()) fail(errno);
  if (keep_permissions && ::fchmod(file_.get(), permissions) != 0) {
    const int error = errno;
    ::unlink(beside_.c_str());
    fail(error);
  }
}

ReplacingFile::~ReplacingFile() {
  if (!beside_.empty()) ::unlink(beside_.c_str());
}

FileDescriptor ReplacingFile::own() {
  FileDescriptor same(::fcntl(file_.get(), F_DUPFD_CLOEXEC, 0));
  if (!same.is_open() || ::flock(same.get(), LOCK_EX | LOCK_NB) != 0) fail(errno);
  return same;
}

void ReplacingFile::append(std::string_view piece) {
  write_whole(file_.get(), piece);
  unflushed_ += piece.size();
  if (unflushed_ < most_unflushed) return;
  if (::fdatasync(file_.get()) != 0) fail(errno);
  unflushed_ = 0;
}

void ReplacingFile::finish() {
  if (::fsync(file_.get()) != 0) fail(errno);
  take_name();
  flush_directory(target_.parent_path());
}

void ReplacingFile::finish_soon() { take_name(); }

void ReplacingFile::take_name() {
  if (!file_.close()) fail(errno);
  if (::rename(beside_.c_str(), target_.c_str()) != 0) fail(errno);
  beside_.clear();
}

void replace_file(const fs::path& path, std::string_view content) {
  ReplacingFile file(path);
  file.append(content);
  file.finish();
}

}  // namespace lineweir::platform
