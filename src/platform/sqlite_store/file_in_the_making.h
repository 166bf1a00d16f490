#pragma once

#include <filesystem>

namespace lineweir::platform {

// A file under another name than that which it shall have; gone with this object. A Failure where
// it can't be made, also where the name is taken.
class FileInTheMaking {
 public:
  explicit FileInTheMaking(std::filesystem::path file);
  ~FileInTheMaking();
  FileInTheMaking(const FileInTheMaking&) = delete;
  FileInTheMaking& operator=(const FileInTheMaking&) = delete;

  // Where it lies meanwhile.
  const std::filesystem::path& beside() const { return beside_; }

  // It is whole.
  void take_name();

 private:
  std::filesystem::path file_;
  std::filesystem::path beside_;
};

}  // namespace lineweir::platform
