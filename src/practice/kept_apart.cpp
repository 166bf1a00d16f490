#include "practice/kept_apart.h"

#include <utility>

#include "base/failure.h"

namespace lineweir::practice {

std::optional<std::string> KeptFiles::read(const std::string& path) const {
  return files_.read(path);
}

std::optional<std::string> KeptFiles::read_short(const std::string& path,
                                                 std::size_t longest) const {
  return files_.read_short(path, longest);
}

std::optional<std::string> KeptFiles::why_unreadable(const std::string& path) const {
  return files_.why_unreadable(path);
}

void KeptFiles::replace(const std::string& path, std::string_view content) {
  folder_.require(path, failure_number::file_access);
  files_.replace(path, content);
}

void KeptFiles::append(const std::string& path, std::string_view content) {
  folder_.require(path, failure_number::file_access);
  files_.append(path, content);
}

bool KeptFiles::exists(const std::string& path) const { return files_.exists(path); }

std::string KeptFiles::current_directory() const { return files_.current_directory(); }

std::unique_ptr<platform::ConsoleFile> KeptFiles::console_file(const std::string& name) {
  folder_.require(name, failure_number::file_access);
  return files_.console_file(name);
}

std::unique_ptr<platform::FileSource> KeptUserFiles::read(const std::string& path) {
  return files_.read(path);
}

std::unique_ptr<platform::FileTarget> KeptUserFiles::write(const std::string& path,
                                                           platform::SparedFiles spared) {
  folder_.require(path, failure_number::file_access);
  return files_.write(path, std::move(spared));
}

std::unique_ptr<platform::Database> KeptDatabases::open(const std::string& path) {
  folder_.require(path, failure_number::database_read_only);
  return databases_.open(path);
}

std::unique_ptr<platform::Database> KeptDatabases::create(const std::string& path) {
  folder_.require(path, failure_number::database_read_only);
  return databases_.create(path);
}

void ReadClock::set(const platform::DateTime&) {
  throw Failure(failure_number::permission_denied, "In practice the computer's clock isn't set.");
}

}  // namespace lineweir::practice
