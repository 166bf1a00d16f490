#pragma once

#include "platform/threaded/work_crew.h"
#include "platform/threaded/write_behind.h"
#include "platform/user_files.h"

namespace lineweir::platform {

// The files that the user chooses, each with a thread that alone waits for it.
class ThreadedUserFiles final : public UserFiles {
 public:
  explicit ThreadedUserFiles(FileWorld world) : world_(std::move(world)) {}

  // What was abandoned is tidied up where the files answer within a second. All sources and targets
  // must be gone.
  ~ThreadedUserFiles() override;
  ThreadedUserFiles(const ThreadedUserFiles&) = delete;
  ThreadedUserFiles& operator=(const ThreadedUserFiles&) = delete;

  std::unique_ptr<FileSource> read(const std::string& path) override;
  std::unique_ptr<FileTarget> write(const std::string& path, SparedFiles spared) override;

 private:
  FileWorld world_;
  WorkCrew crew_;
};

}  // namespace lineweir::platform
