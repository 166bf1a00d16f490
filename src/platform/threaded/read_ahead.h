#pragma once

#include "platform/streamed_files.h"
#include "platform/threaded/work_crew.h"
#include "platform/user_files.h"

namespace lineweir::platform {

// A file that a thread reads some pieces ahead of whoever takes them.
class ReadAhead final : public FileSource {
 public:
  ReadAhead(WorkCrew& crew, std::shared_ptr<const StreamedFiles> files, std::string path);
  ~ReadAhead() override;
  ReadAhead(const ReadAhead&) = delete;
  ReadAhead& operator=(const ReadAhead&) = delete;

  std::optional<std::string> take() override;
  bool unreadable() const override;
  std::uint64_t size() const override;

 private:
  struct Shared;

  static void read(Shared& shared, const StreamedFiles& files, const std::string& path);

  std::shared_ptr<Shared> shared_;
};

}  // namespace lineweir::platform
