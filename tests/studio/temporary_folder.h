#pragma once

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

// A fresh folder for the files of one test, removed with all that is in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "lineweir-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder_ = name;
  }
  ~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  std::string path(const std::string& name) const { return (folder_ / name).string(); }

 private:
  std::filesystem::path folder_;
};
