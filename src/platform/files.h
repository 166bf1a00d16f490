#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/console_file.h"

namespace lineweir::platform {

// The new content of a file, written piece by piece beside the file that it will replace.
class FileInMaking {
 public:
  virtual ~FileInMaking() = default;

  // Fails as Files::replace does.
  virtual void append(std::string_view piece) = 0;

  // The new content takes its place. Where this isn't called nothing has changed and nothing is
  // left behind.
  virtual void finish() = 0;
};

// A file that is read piece by piece.
class FileReader {
 public:
  virtual ~FileReader() = default;

  // The next bytes, at most so many; none behind the end. Where they can't be read a Failure of
  // number 75 names the path and the reason.
  virtual std::string read(std::size_t most) = 0;

  // How many bytes the file had when it was opened.
  virtual std::uint64_t size() const = 0;
};

// Files under the console's working directory. Paths may be relative to it; they are texts in the
// console's letters (letters/path_text.h).
class Files {
 public:
  virtual ~Files() = default;

  // The whole content, or nothing if there is no such file or it can't be read.
  virtual std::optional<std::string> read(const std::string& path) const = 0;

  // Why the file that stands there can't be read, with its path; nothing if it can be, or if there
  // is none.
  virtual std::optional<std::string> why_unreadable(const std::string& path) const = 0;

  // Replaces the file as a whole: after a crash at any moment either the old or the new content
  // stands. Where it can't be written a Failure of number 75 names the path and the reason, and
  // the old content stands.
  virtual void replace(const std::string& path, std::string_view content) = 0;

  // Begins to replace the file by content that is too large for one piece.
  virtual std::unique_ptr<FileInMaking> begin_replace(const std::string& path) = 0;

  // Adds to the end of the file, which is made if there is none. What was added survives the
  // program's end, but not the machine's.
  virtual void append(const std::string& path, std::string_view content) = 0;

  virtual bool exists(const std::string& path) const = 0;

  virtual std::string current_directory() const = 0;

  // The console's own file of that name, see ConsoleFile. This object must outlive it.
  virtual std::unique_ptr<ConsoleFile> console_file(const std::string& name) = 0;

  // Nothing if there is no such file or it can't be read.
  virtual std::unique_ptr<FileReader> open(const std::string& path) const = 0;

  // Whether both paths lead to one file, in whatever spelling and by whatever links, or would once
  // there is one. Neither file is opened.
  virtual bool same_file(const std::string& path, const std::string& other) const = 0;
};

}  // namespace lineweir::platform
