#pragma once

#include "platform/database.h"
#include "platform/streamed_files.h"
#include "platform/user_files.h"

namespace lineweir::platform {

// Files that answer at once, or not at all while they are told so.
class ScriptedUserFiles final : public UserFiles {
 public:
  // Both must outlive this object.
  ScriptedUserFiles(StreamedFiles& files, DatabaseEngine& databases)
      : files_(&files), databases_(databases) {}

  // Other files from now on.
  void use(StreamedFiles& files) { files_ = &files; }

  // From now on no file answers, or all do again.
  void stall(bool stalled) { stalled_ = stalled; }

  std::unique_ptr<FileSource> read(const std::string& path) override;
  std::unique_ptr<FileTarget> write(const std::string& path, SparedFiles spared) override;

 private:
  class Source;
  class Target;

  StreamedFiles* files_;
  DatabaseEngine& databases_;
  bool stalled_ = false;
};

}  // namespace lineweir::platform
