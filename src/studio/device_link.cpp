#include "studio/device_link.h"

#include <filesystem>
#include <stdexcept>
#include <utility>

namespace lineweir::studio {
namespace {

namespace fs = std::filesystem;

// Throws unless nothing, or only a stale link, stands at the path.
void clear_stale(const fs::path& path, const fs::path& device) {
  const fs::file_status status = fs::symlink_status(path);
  if (status.type() == fs::file_type::not_found) return;
  if (status.type() != fs::file_type::symlink) {
    throw std::runtime_error(path.string() + ": exists and is no symbolic link");
  }
  const fs::path target = fs::read_symlink(path);
  if (target != device && fs::exists(path)) {
    throw std::runtime_error(path.string() + ": is a link to " + target.string() +
                             ", which exists");
  }
  fs::remove(path);
}

}  // namespace

DeviceLink::DeviceLink(std::string path, std::string device)
    : path_(std::move(path)), device_(std::move(device)) {
  try {
    clear_stale(path_, device_);
    fs::create_symlink(device_, path_);
  } catch (const fs::filesystem_error& error) {
    throw std::runtime_error(path_ + ": " + error.code().message());
  }
}

DeviceLink::~DeviceLink() {
  std::error_code error;
  if (fs::read_symlink(path_, error) == device_) fs::remove(path_, error);
}

}  // namespace lineweir::studio
