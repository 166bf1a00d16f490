#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/console_file.h"

namespace lineweir::platform {

// Files under the console's working directory. Paths may be relative to it; they are texts in the
// console's letters (letters/path_text.h).
class Files {
 public:
  virtual ~Files() = default;

  // The whole content, or nothing if there is no such file or it can't be read.
  virtual std::optional<std::string> read(const std::string& path) const = 0;

  // The same, and nothing for a file that is longer than that; no more of it is read.
  virtual std::optional<std::string> read_short(const std::string& path,
                                                std::size_t longest) const = 0;

  // Why the file that stands there can't be read, with its path; nothing if it can be, or if there
  // is none.
  virtual std::optional<std::string> why_unreadable(const std::string& path) const = 0;

  // Replaces the file as a whole: after a crash at any moment either the old or the new content
  // stands. Where it can't be written a Failure of number 75 names the path and the reason, and
  // the old content stands.
  virtual void replace(const std::string& path, std::string_view content) = 0;

  // Adds to the end of the file, which is made if there is none. What was added survives the
  // program's end, but not the machine's.
  virtual void append(const std::string& path, std::string_view content) = 0;

  virtual bool exists(const std::string& path) const = 0;

  virtual std::string current_directory() const = 0;

  // The console's own file of that name, see ConsoleFile. This object must outlive it.
  virtual std::unique_ptr<ConsoleFile> console_file(const std::string& name) = 0;
};

}  // namespace lineweir::platform
