#pragma once

#include <filesystem>
#include <string_view>

#include "platform/disk/file_descriptor.h"

namespace lineweir::platform {

// Puts a file of that content in the place of the present one, or makes it. The content is written
// to a file beside it, `NAME.PROCESS.new`, brought to the disk and given the name in one step:
// after a crash at any moment the old or the new content stands whole, though such a file may be
// left beside it. A link is followed to its file, and the file's permissions are kept.
//
// On any error the old content stands, nothing is left beside it, and a std::system_error tells the
// system's reason.
void replace_file(const std::filesystem::path& path, std::string_view content);

// Replaces a file with the content in pieces. Destroyed before it is finished, it leaves the old
// content and nothing beside it.
class ReplacingFile {
 public:
  explicit ReplacingFile(const std::filesystem::path& path);
  ~ReplacingFile();
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;

  // The new content belongs to this process from its first moment under the name, for as long as
  // the handle is open, see platform/disk/owned_file.h.
  FileDescriptor own();

  void append(std::string_view piece);
  void finish();
  // Without waiting for the disk: after the end of the program, however it comes, the new content
  // stands whole, but for some seconds not after the end of the machine.
  void finish_soon();

 private:
  void take_name();

  std::filesystem::path target_;
  std::filesystem::path beside_;
  FileDescriptor file_;
  std::size_t unflushed_ = 0;
};

// Writes all of the content to an open file, in one write where the system takes it so. Throws
// std::system_error.
void write_whole(int descriptor, std::string_view content);

}  // namespace lineweir::platform
