#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/console_file.h"
#include "platform/disk/file_descriptor.h"

namespace lineweir::platform {

// A console's own file in a folder: the first of the names that no other console has. A file is
// made with the first content, and goes when there is none any more.
class DiskConsoleFile final : public ConsoleFile {
 public:
  DiskConsoleFile(std::filesystem::path folder, std::string first_name)
      : folder_(std::move(folder)), first_name_(std::move(first_name)) {}

  std::vector<std::string> take_over() override;
  void replace(std::string_view content) override;

 private:
  // A file that belongs to this process for as long as it is open.
  struct Held {
    std::filesystem::path path;
    FileDescriptor file;
  };

  std::filesystem::path path(int number) const;
  Held claim() const;
  void write(std::string_view content);

  std::filesystem::path folder_;
  std::string first_name_;
  std::optional<Held> own_;
  // What else was taken over.
  std::vector<Held> left_;
};

}  // namespace lineweir::platform
