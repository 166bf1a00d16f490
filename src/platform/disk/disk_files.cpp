#include "platform/disk/disk_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "base/failure.h"
#include "letters/path_text.h"
#include "platform/disk/disk_console_file.h"
#include "platform/disk/file_descriptor.h"
#include "platform/disk/path_lookup.h"
#include "platform/disk/replace_file.h"

namespace lineweir::platform {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& path, const std::error_code& reason) {
  throw Failure(failure_number::file_access, "Can't write " + path + ": " + reason.message());
}

// Opening a pipe would wait for its other end, and a device may never come to an end.
struct OpenedFile {
  FileDescriptor descriptor;
  std::uint64_t size = 0;
};

std::optional<OpenedFile> open_regular(const fs::path& path) {
  // Opening alone would tell whoever waits at the other end of a pipe, or change a device.
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return std::nullopt;
  FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (!file.is_open() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  return OpenedFile{std::move(file), static_cast<std::uint64_t>(status.st_size)};
}

// The same, or a pipe, whose other end it waits for.
std::optional<OpenedFile> open_stream(const fs::path& path) {
  std::error_code error;
  if (!fs::is_fifo(path, error)) return open_regular(path);
  FileDescriptor pipe(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!pipe.is_open()) return std::nullopt;
  return OpenedFile{std::move(pipe), 0};
}

// How many bytes there were; nothing where they can't be read.
std::optional<std::size_t> read_some(const FileDescriptor& file, char* place, std::size_t most) {
  while (true) {
    const ssize_t count = ::read(file.get(), place, most);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) return std::nullopt;
  }
}

class DiskFileReader final : public FileReader {
 public:
  DiskFileReader(std::string path, OpenedFile file)
      : path_(std::move(path)), file_(std::move(file)) {}

  std::string read(std::size_t most) override {
    std::string piece(most, '\0');
    const auto count = read_some(file_.descriptor, piece.data(), most);
    if (!count) {
      throw Failure(
          failure_number::file_access,
          "Can't read " + path_ + ": " + std::error_code(errno, std::generic_category()).message());
    }
    piece.resize(*count);
    return piece;
  }
  std::uint64_t size() const override { return file_.size; }

 private:
  std::string path_;
  OpenedFile file_;
};

class DiskFileInMaking final : public FileInMaking {
 public:
  explicit DiskFileInMaking(const fs::path& path) : path_(path.string()), file_(path) {}

  void append(std::string_view piece) override {
    attempt([&] { file_.append(piece); });
  }
  void finish() override {
    attempt([&] { file_.finish(); });
  }

 private:
  template <class Step>
  void attempt(Step&& step) {
    try {
      step();
    } catch (const std::system_error& error) {
      fail(path_, error.code());
    }
  }

  std::string path_;
  ReplacingFile file_;
};

// Where nothing stands nothing can be unreadable; a link that leads nowhere is something.
bool stands_at(const fs::path& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 || errno != ENOENT;
}

// The system's number for why the file can't be read; 0 if it can be.
int reading_error(const fs::path& path) {
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!file.is_open()) return errno;
  struct stat status {};
  if (::fstat(file.get(), &status) != 0) return errno;
  if (S_ISDIR(status.st_mode)) return EISDIR;
  if (!S_ISREG(status.st_mode)) return EINVAL;
  char first = 0;
  return ::read(file.get(), &first, 1) < 0 ? errno : 0;
}

fs::path absolute_directory(const fs::path& directory) {
  fs::path absolute = fs::absolute(directory).lexically_normal();
  return absolute.has_filename() ? absolute : absolute.parent_path();
}

}  // namespace

DiskFiles::DiskFiles(const fs::path& working_directory, const Letters& letters,
                     const GuardedFiles* guard)
    : working_directory_(absolute_directory(working_directory)), letters_(letters), guard_(guard) {}

fs::path DiskFiles::locate(const std::string& path) const {
  return place_on_disk(working_directory_, path, letters_);
}

bool DiskFiles::guarded(const fs::path& file) const {
  return guard_ != nullptr && guard_->guarded(file);
}

fs::path DiskFiles::target(const std::string& path) const {
  fs::path file = locate(path);
  if (!guarded(file)) return file;
  throw Failure(failure_number::file_access,
                "Can't write " + file.string() + ": it is a database that is in use");
}

std::optional<std::string> DiskFiles::read(const std::string& path) const {
  return read_short(path, std::string().max_size());
}

std::optional<std::string> DiskFiles::read_short(const std::string& path,
                                                 std::size_t longest) const {
  const fs::path place = locate(path);
  if (guarded(place)) return std::nullopt;
  const auto file = open_regular(place);
  if (!file) return std::nullopt;
  std::string content;
  std::array<char, 65536> piece;
  while (true) {
    const auto count = read_some(file->descriptor, piece.data(), piece.size());
    if (!count || *count > longest - content.size()) return std::nullopt;
    if (*count == 0) return content;
    content.append(piece.data(), *count);
  }
}

std::optional<std::string> DiskFiles::why_unreadable(const std::string& path) const {
  const fs::path file = locate(path);
  if (!stands_at(file)) return std::nullopt;
  if (guarded(file)) return "Can't read " + file.string() + ": it is a database that is in use";
  const int error = reading_error(file);
  if (error == 0) return std::nullopt;
  return "Can't read " + file.string() + ": " + std::generic_category().message(error);
}

std::unique_ptr<FileReader> DiskFiles::open(const std::string& path) const {
  const fs::path place = locate(path);
  if (guarded(place)) return nullptr;
  auto file = open_stream(place);
  return file ? std::make_unique<DiskFileReader>(place.string(), *std::move(file)) : nullptr;
}

bool DiskFiles::same_file(const std::string& path, const std::string& other) const {
  const fs::path first = locate(path);
  const fs::path second = locate(other);
  std::error_code error;
  // Where one of them isn't there yet, the folders and names decide.
  if (fs::equivalent(first, second, error)) return true;
  return fs::weakly_canonical(first, error) == fs::weakly_canonical(second, error);
}

void DiskFiles::replace(const std::string& path, std::string_view content) {
  const fs::path file_name = target(path);
  try {
    replace_file(file_name, content);
  } catch (const std::system_error& error) {
    fail(file_name.string(), error.code());
  }
}

std::unique_ptr<FileInMaking> DiskFiles::begin_replace(const std::string& path) {
  const fs::path file_name = target(path);
  try {
    return std::make_unique<DiskFileInMaking>(file_name);
  } catch (const std::system_error& error) {
    fail(file_name.string(), error.code());
  }
}

void DiskFiles::append(const std::string& path, std::string_view content) {
  const fs::path file_name = target(path);
  const FileDescriptor file(::open(
      file_name.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666));
  if (!file.is_open()) fail(file_name.string(), {errno, std::generic_category()});
  try {
    // Nothing is kept in the program, so there is nothing to flush behind the write.
    write_whole(file.get(), content);
  } catch (const std::system_error& error) {
    fail(file_name.string(), error.code());
  }
}

bool DiskFiles::exists(const std::string& path) const {
  std::error_code error;
  const fs::file_status status = fs::status(locate(path), error);
  return fs::exists(status) && !fs::is_directory(status);
}

std::string DiskFiles::current_directory() const {
  return path_text(letters_, working_directory_.string());
}

std::unique_ptr<ConsoleFile> DiskFiles::console_file(const std::string& name) {
  return std::make_unique<DiskConsoleFile>(working_directory_, name);
}

}  // namespace lineweir::platform
