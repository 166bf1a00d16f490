#include "platform/disk/disk_console_file.h"

#include <system_error>
#include <utility>

#include "base/failure.h"
#include "platform/disk/owned_file.h"
#include "platform/disk/replace_file.h"

namespace lineweir::platform {
namespace {

namespace fs = std::filesystem;

// Whether the name is taken, and not the folder at fault.
bool is_taken(const std::error_code& error) {
  return error == std::errc::file_exists || error == std::errc::operation_would_block;
}

}  // namespace

fs::path DiskConsoleFile::path(int number) const {
  return folder_ / console_file_name(first_name_, number);
}

std::vector<std::string> DiskConsoleFile::take_over() {
  std::vector<std::string> contents;
  for (int number = 1; number <= most_console_files; ++number) {
    auto adopted = adopt_file(path(number));
    if (!adopted) continue;
    try {
      std::string content = content_of(adopted->descriptor, adopted->size);
      if (!content.empty()) contents.push_back(std::move(content));
    } catch (const std::system_error&) {
      // It stays, for the next start.
      continue;
    }
    Held held{path(number), std::move(adopted->descriptor)};
    if (own_) {
      left_.push_back(std::move(held));
    } else {
      own_ = std::move(held);
    }
  }
  return contents;
}

void DiskConsoleFile::replace(std::string_view content) {
  try {
    // Its file was deleted, and another console has the name by now.
    if (own_ && fs::exists(own_->path) && !is_named(own_->path, own_->file)) own_.reset();
    if (!content.empty()) {
      write(content);
    } else if (own_) {
      fs::remove(own_->path);
      own_.reset();
    }
    for (const Held& held : left_) fs::remove(held.path);
    left_.clear();
  } catch (const std::system_error& error) {
    const fs::path path = own_ ? own_->path : this->path(1);
    throw Failure(failure_number::file_access,
                  "Can't write " + path.string() + ": " + error.code().message());
  }
}

// A file that holds something belongs to a console that has ended, and waits for the next start.
DiskConsoleFile::Held DiskConsoleFile::claim() const {
  for (int number = 1; number <= most_console_files; ++number) {
    auto empty = adopt_file(path(number));
    if (empty && empty->size == 0) return {path(number), std::move(empty->descriptor)};
    try {
      return {path(number), make_owned_file(path(number)).descriptor};
    } catch (const std::system_error& error) {
      if (!is_taken(error.code())) throw;
    }
  }
  throw std::system_error(std::make_error_code(std::errc::file_exists));
}

void DiskConsoleFile::write(std::string_view content) {
  if (!own_) own_ = claim();
  ReplacingFile file(own_->path);
  FileDescriptor owned = file.own();
  file.append(content);
  file.finish_soon();
  own_->file = std::move(owned);
}

}  // namespace lineweir::platform
