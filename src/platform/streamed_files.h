#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/files.h"

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

// Files of any size and at any place. All this waits for the disk, however long it takes, and may
// be called by several threads: see UserFiles for how a console uses it.
class StreamedFiles : public Files {
 public:
  // Nothing if there is no such file or it can't be read. A pipe waits for its other end.
  virtual std::unique_ptr<FileReader> open(const std::string& path) const = 0;

  // Begins to replace the file by content that is too large for one piece.
  virtual std::unique_ptr<FileInMaking> begin_replace(const std::string& path) = 0;

  // Whether both paths lead to one file, in whatever spelling and by whatever links, or would once
  // there is one. Neither file is opened.
  virtual bool same_file(const std::string& path, const std::string& other) const = 0;
};

}  // namespace lineweir::platform
