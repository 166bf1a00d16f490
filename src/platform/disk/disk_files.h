#pragma once

#include <filesystem>

#include "letters/letters.h"
#include "platform/disk/guarded_files.h"
#include "platform/streamed_files.h"

namespace lineweir::platform {

// The files of the disk, below a working directory that never changes. A path names a file whatever
// the case of its letters, unless a file of exactly that name exists.
class DiskFiles final : public StreamedFiles {
 public:
  // A relative directory is resolved against the process's own, once. Paths are texts in the
  // letters. Guarded files are never opened here: they can't be read or written. Letters and guard
  // must outlive this object.
  explicit DiskFiles(const std::filesystem::path& working_directory,
                     const Letters& letters = utf8_letters(), const GuardedFiles* guard = nullptr);

  std::optional<std::string> read(const std::string& path) const override;
  std::optional<std::string> read_short(const std::string& path,
                                        std::size_t longest) const override;
  std::optional<std::string> why_unreadable(const std::string& path) const override;
  std::unique_ptr<FileReader> open(const std::string& path) const override;
  void replace(const std::string& path, std::string_view content) override;
  std::unique_ptr<FileInMaking> begin_replace(const std::string& path) override;
  void append(const std::string& path, std::string_view content) override;
  bool same_file(const std::string& path, const std::string& other) const override;
  // Directories don't count.
  bool exists(const std::string& path) const override;
  std::string current_directory() const override;
  std::unique_ptr<ConsoleFile> console_file(const std::string& name) override;

 private:
  std::filesystem::path locate(const std::string& path) const;
  bool guarded(const std::filesystem::path& file) const;
  // The file to write, unless it is guarded.
  std::filesystem::path target(const std::string& path) const;

  std::filesystem::path working_directory_;
  const Letters& letters_;
  const GuardedFiles* guard_;
};

}  // namespace lineweir::platform
