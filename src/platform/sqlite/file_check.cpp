#include "platform/sqlite/file_check.h"

#include <fcntl.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string>

#include "base/failure.h"
#include "platform/sqlite/sqlite_failure.h"

namespace lineweir::platform {
namespace {

// What the system shows as files, which to read may wait for ever: proc, sys, debug and trace.
bool is_shown_by_system(const std::filesystem::path& file) {
  constexpr std::array<unsigned long, 4> shown_systems = {0x9FA0UL, 0x62656572UL, 0x64626720UL,
                                                          0x74726163UL};
  struct statfs status {};
  if (::statfs(file.c_str(), &status) != 0) return false;
  const auto kind = static_cast<unsigned long>(status.f_type) & 0xFFFFFFFFUL;
  return std::ranges::find(shown_systems, kind) != shown_systems.end();
}

}  // namespace

void check_database_file(const std::filesystem::path& file) {
  const std::string name = shown_name(file);
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  if (!std::filesystem::exists(status)) {
    throw Failure(failure_number::database_not_found, "Couldn't find file " + name + ".");
  }
  if (!std::filesystem::is_regular_file(status) || is_shown_by_system(file)) {
    throw Failure(failure_number::not_a_database, name + " is not a file.");
  }
}

void require_rights(const std::filesystem::path& file) {
  const auto is_refused = [](const std::filesystem::path& path) {
    if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0) return false;
    return errno == EACCES || errno == EPERM || errno == EROFS;
  };
  if (is_refused(file) || is_refused(file.parent_path()))
    throw sqlite_failure(SQLITE_READONLY, file, {});
}

}  // namespace lineweir::platform
