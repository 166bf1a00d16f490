#include "practice/own_folder.h"

#include <algorithm>

#include "base/failure.h"

namespace lineweir::practice {

namespace fs = std::filesystem;

OwnFolder::OwnFolder(const fs::path& folder) {
  std::error_code error;
  folder_ = fs::weakly_canonical(folder, error);
  if (error) folder_ = folder.lexically_normal();
}

bool OwnFolder::holds(const std::string& path) const {
  std::error_code error;
  const fs::path place = fs::weakly_canonical(folder_ / path, error);
  if (error) return false;
  const auto [behind, rest] =
      std::mismatch(folder_.begin(), folder_.end(), place.begin(), place.end());
  return behind == folder_.end() && rest != place.end();
}

void OwnFolder::require(const std::string& path, int failure_number) const {
  if (holds(path)) return;
  throw Failure(failure_number,
                path + " can't be used: practice keeps to the folder " + folder_.string());
}

}  // namespace lineweir::practice
