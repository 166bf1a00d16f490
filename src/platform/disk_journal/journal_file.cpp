#include "platform/disk_journal/journal_file.h"

#include <fcntl.h>
#include <unistd.h>

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

JournalFile::JournalFile(std::filesystem::path file, OwnedFile owned)
    : file_(std::move(file)), descriptor_(std::move(owned.descriptor)), size_(owned.size) {}

JournalFile JournalFile::make(const std::filesystem::path& file) {
  OwnedFile made = make_owned_file(file, O_APPEND);
  try {
    sync_folder_of(file);
  } catch (const std::system_error&) {
    ::unlink(file.c_str());
    throw;
  }
  return {file, std::move(made)};
}

std::optional<JournalFile> JournalFile::adopt(const std::filesystem::path& file) {
  auto left = adopt_file(file, O_APPEND);
  if (!left) return std::nullopt;
  return JournalFile(file, *std::move(left));
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

std::string JournalFile::content() const { return content_of(descriptor_, size_); }

}  // namespace lineweir::platform
