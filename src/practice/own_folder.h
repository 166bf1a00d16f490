#pragma once

#include <filesystem>
#include <string>

namespace lineweir::practice {

// The folder in which alone a practice console writes.
class OwnFolder {
 public:
  // An absolute path.
  explicit OwnFolder(const std::filesystem::path& folder);

  // Whether the path, which may be relative to the folder, leads to a place in it by whatever
  // links. A path whose letters aren't those of the file system is taken for one outside if it is
  // absolute.
  bool holds(const std::string& path) const;

  // A Failure of that number for a path outside.
  void require(const std::string& path, int failure_number) const;

 private:
  std::filesystem::path folder_;
};

}  // namespace lineweir::practice
