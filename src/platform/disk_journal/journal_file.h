#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/disk/owned_file.h"

namespace lineweir::platform {

// A file of records in the settings folder, which belongs to one process at a time. What fails
// throws std::system_error.
class JournalFile {
 public:
  // A new file that belongs to this process until it ends.
  static JournalFile make(const std::filesystem::path& file);

  // A file that a process left which has ended; nothing where there is none or its process lives.
  static std::optional<JournalFile> adopt(const std::filesystem::path& file);

  // Adds the bytes as a whole: after a failure the file is as it was. They survive the end of the
  // process.
  void append(std::string_view bytes);

  // What was added survives the loss of power.
  void sync();

  // Nothing of what was added is needed any more.
  void clear();

  // The file goes. After that this object is of no more use.
  void remove();

  std::string content() const;
  bool empty() const { return size_ == 0; }

 private:
  JournalFile(std::filesystem::path file, OwnedFile owned);

  std::filesystem::path file_;
  FileDescriptor descriptor_;
  std::size_t size_;
};

}  // namespace lineweir::platform
