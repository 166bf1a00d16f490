#include "desktop/practice_place.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

#include "practice/practice_setup.h"
#include "state/settings_record.h"

namespace lineweir {
namespace {

namespace fs = std::filesystem;

std::optional<std::string> content_of(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  return std::string{std::istreambuf_iterator<char>(file), {}};
}

bool write_settings(const fs::path& folder, const std::optional<std::string>& settings) {
  const fs::path path = folder / settings_file_name;
  std::error_code error;
  fs::remove(path, error);
  if (!settings) return !error;
  std::ofstream file(path, std::ios::binary);
  file << *settings;
  return static_cast<bool>(file.flush());
}

}  // namespace

PracticePlace::PracticePlace() {
  std::error_code error;
  const fs::path real = fs::current_path(error);
  const fs::path folder = real / practice::practice_folder;
  if (!error) fs::create_directories(folder, error);
  if (error) {
    problem_ = "There can be no practice: the folder " + folder.string() +
               " can't be made: " + error.message() + ".";
    return;
  }
  lock_ = std::make_unique<QLockFile>(QString::fromStdString((folder / "Practice.lock").string()));
  lock_->setStaleLockTime(0);
  if (!lock_->tryLock()) {
    problem_ = lock_->error() == QLockFile::LockFailedError
                   ? "A practice show is open already."
                   : "There can be no practice: " + folder.string() + " can't be written to.";
    return;
  }
  const auto look = practice::practice_settings(content_of(real / settings_file_name));
  if (!write_settings(folder, look)) {
    problem_ = "There can be no practice: " + folder.string() + " can't be written to.";
    return;
  }
  fs::current_path(folder, error);
  if (error) problem_ = "There can be no practice: " + error.message() + ".";
}

}  // namespace lineweir
