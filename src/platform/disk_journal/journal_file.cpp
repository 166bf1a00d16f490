#include "platform/disk_journal/journal_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/disk/replace_file.h"

namespace lineweir::platform {
namespace {

[[noreturn]] void fail(int error) { throw std::system_error(error, std::generic_category()); }

// The name itself survives the loss of power.
void sync_folder_of(const std::filesystem::path& file) {
  const FileDescriptor folder(
      ::open(file.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.is_open() || ::fsync(folder.get()) != 0) fail(errno);
}

}  // namespace

JournalFile::JournalFile(std::filesystem::path file, FileDescriptor descriptor)
    : file_(std::move(file)), descriptor_(std::move(descriptor)) {}

JournalFile JournalFile::make(const std::filesystem::path& file) {
  FileDescriptor descriptor(
      ::open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_APPEND | O_NOFOLLOW | O_CLOEXEC, 0600));
  if (!descriptor.is_open()) fail(errno);
  try {
    if (::flock(descriptor.get(), LOCK_EX | LOCK_NB) != 0) fail(errno);
    sync_folder_of(file);
  } catch (const std::system_error&) {
    ::unlink(file.c_str());
    throw;
  }
  return JournalFile(file, std::move(descriptor));
}

std::optional<JournalFile> JournalFile::adopt(const std::filesystem::path& file) {
  FileDescriptor descriptor(::open(file.c_str(), O_RDWR | O_APPEND | O_NOFOLLOW | O_CLOEXEC));
  struct stat status {};
  if (!descriptor.is_open() || ::flock(descriptor.get(), LOCK_EX | LOCK_NB) != 0 ||
      ::fstat(descriptor.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  JournalFile adopted(file, std::move(descriptor));
  adopted.size_ = static_cast<std::size_t>(status.st_size);
  return adopted;
}

void JournalFile::append(std::string_view bytes) {
  try {
    write_whole(descriptor_.get(), bytes);
  } catch (const std::system_error&) {
    // A part of them may stand there. Where it can't be taken back either, a reader passes over it.
    [[maybe_unused]] const int ignored = ::ftruncate(descriptor_.get(), static_cast<off_t>(size_));
    throw;
  }
  size_ += bytes.size();
}

void JournalFile::sync() {
  if (::fdatasync(descriptor_.get()) != 0) fail(errno);
}

void JournalFile::clear() {
  if (::ftruncate(descriptor_.get(), 0) != 0) fail(errno);
  size_ = 0;
}

void JournalFile::remove() {
  // Another process may have opened it in the meantime, and must find nothing in it.
  clear();
  if (::unlink(file_.c_str()) != 0) fail(errno);
  sync_folder_of(file_);
}

std::string JournalFile::content() const {
  std::string content(size_, '\0');
  std::size_t read = 0;
  while (read < size_) {
    const ssize_t count =
        ::pread(descriptor_.get(), content.data() + read, size_ - read, static_cast<off_t>(read));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) fail(errno);
    if (count == 0) break;
    read += static_cast<std::size_t>(count);
  }
  content.resize(read);
  return content;
}

}  // namespace lineweir::platform
