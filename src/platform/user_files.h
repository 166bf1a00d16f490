#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lineweir::platform {

// A file that is being read. Destroyed, it is abandoned, whether it answers or not.
class FileSource {
 public:
  virtual ~FileSource() = default;

  // The next bytes, as soon as they have come: nothing until then, and an empty piece behind the
  // end. Where they can't be read a Failure of number 75 names the path and the reason.
  virtual std::optional<std::string> take() = 0;

  // There is no such file, or it can't be opened: nothing will come.
  virtual bool unreadable() const = 0;

  // How many bytes the file had when it was opened; 0 until then.
  virtual std::uint64_t size() const = 0;
};

// The new content of a file. Destroyed before it is done, it leaves the file as it is and nothing
// beside it, once the file answers.
class FileTarget {
 public:
  virtual ~FileTarget() = default;

  // False while what was handed over is more than the file has taken, or the file doesn't answer.
  // Where it can't be written, or is to be spared, a Failure of number 75 says so.
  virtual bool ready() = 0;

  // Hands over the next bytes, and that they were the last. Both only take note.
  virtual void append(std::string bytes) = 0;
  virtual void finish() = 0;

  // Whether the whole content stands in the file's place. Fails as ready() does.
  virtual bool done() = 0;
};

// Files that are not to be overwritten, and what the user is told of each.
struct SparedFiles {
  // By whatever path they are reached.
  std::vector<std::pair<std::string, std::string>> files;
  // Of all databases.
  std::string database;
};

// Files that the user chooses. They may be of any size and lie on a drive that answers late or
// never: nothing here waits for them.
class UserFiles {
 public:
  virtual ~UserFiles() = default;

  virtual std::unique_ptr<FileSource> read(const std::string& path) = 0;
  virtual std::unique_ptr<FileTarget> write(const std::string& path, SparedFiles spared) = 0;
};

}  // namespace lineweir::platform
