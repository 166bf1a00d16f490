#include "platform/sqlite_store/file_in_the_making.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "platform/disk/file_descriptor.h"
#include "platform/sqlite/sqlite_failure.h"
#include "platform/sqlite_store/sync_folder.h"

namespace lineweir::platform {
namespace {

Failure cannot_be_made(const std::filesystem::path& file, int reason) {
  if (reason == EEXIST) {
    return {failure_number::database_exists,
            "The file " + shown_name(file) + " is there already; it was not touched."};
  }
  return {failure_number::file_access, "The file " + shown_name(file) + " can't be made: " +
                                           std::system_category().message(reason) + "."};
}

}  // namespace

FileInTheMaking::FileInTheMaking(std::filesystem::path file)
    : file_(std::move(file)), beside_(file_) {
  std::error_code ignored;
  if (std::filesystem::exists(std::filesystem::symlink_status(file_, ignored))) {
    throw cannot_be_made(file_, EEXIST);
  }
  beside_ += "." + std::to_string(::getpid()) + ".new";
  constexpr mode_t owner_only = 0600;
  const FileDescriptor made(
      ::open(beside_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, owner_only));
  if (!made.is_open()) throw cannot_be_made(file_, errno);
}

FileInTheMaking::~FileInTheMaking() {
  std::error_code ignored;
  std::filesystem::remove(beside_, ignored);
}

void FileInTheMaking::take_name() {
  if (::link(beside_.c_str(), file_.c_str()) != 0) throw cannot_be_made(file_, errno);
  sync_folder_of(file_);
}

}  // namespace lineweir::platform
