#include "platform/threaded/threaded_user_files.h"

#include <utility>

#include "platform/threaded/read_ahead.h"

namespace lineweir::platform {
namespace {

constexpr auto longest_leave = std::chrono::seconds(1);

}  // namespace

ThreadedUserFiles::~ThreadedUserFiles() { crew_.wait(longest_leave); }

std::unique_ptr<FileSource> ThreadedUserFiles::read(const std::string& path) {
  return std::make_unique<ReadAhead>(crew_, world_.files, path);
}

std::unique_ptr<FileTarget> ThreadedUserFiles::write(const std::string& path, SparedFiles spared) {
  return std::make_unique<WriteBehind>(crew_, world_, path, std::move(spared));
}

}  // namespace lineweir::platform
