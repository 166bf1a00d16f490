#pragma once

#include "platform/streamed_files.h"
#include "platform/threaded/work_crew.h"
#include "platform/user_files.h"

namespace lineweir::platform {

// What the threads that work on a console's files use. It lasts as long as they do.
struct FileWorld {
  std::shared_ptr<StreamedFiles> files;
  std::function<bool(const std::string& path)> is_database;
};

// A file that a thread writes behind whoever hands the content over.
class WriteBehind final : public FileTarget {
 public:
  WriteBehind(WorkCrew& crew, FileWorld world, std::string path, SparedFiles spared);
  ~WriteBehind() override;
  WriteBehind(const WriteBehind&) = delete;
  WriteBehind& operator=(const WriteBehind&) = delete;

  bool ready() override;
  void append(std::string bytes) override;
  void finish() override;
  bool done() override;

 private:
  struct Shared;

  static void write(Shared& shared, const FileWorld& world, const std::string& path,
                    const SparedFiles& spared);

  std::shared_ptr<Shared> shared_;
};

}  // namespace lineweir::platform
