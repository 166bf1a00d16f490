#include "platform/sqlite_store/store_file_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace lineweir::platform {

StoreFileLock::StoreFileLock(const std::string& store_file)
    : file_(
          ::open((store_file + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR)) {
  if (!file_.is_open()) {
    throw std::runtime_error("the store \"" + store_file +
                             "\" can't be used: no file can be made " +
                             "beside it: " + std::system_category().message(errno));
  }
  if (::flock(file_.get(), LOCK_EX | LOCK_NB) == 0) return;
  throw std::runtime_error("another server works on the store \"" + store_file +
                           "\"; end it, or give this one a store of its own");
}

}  // namespace lineweir::platform
