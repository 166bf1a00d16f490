#pragma once

#include <map>
#include <set>
#include <string>

#include "base/failure.h"
#include "platform/streamed_files.h"

namespace lineweir::platform {

// Files that are in memory and last as long as this object.
class MemoryFiles final : public StreamedFiles {
 public:
  std::optional<std::string> read(const std::string& path) const override {
    const auto file = files_.find(path);
    if (file == files_.end() || unreadable_.contains(path)) return std::nullopt;
    return file->second;
  }
  std::optional<std::string> read_short(const std::string& path,
                                        std::size_t longest) const override {
    auto content = read(path);
    if (content && content->size() > longest) content.reset();
    return content;
  }
  std::optional<std::string> why_unreadable(const std::string& path) const override {
    if (!unreadable_.contains(path)) return std::nullopt;
    return "Can't read " + path + ": Permission denied";
  }
  void replace(const std::string& path, std::string_view content) override {
    if (unwritable_.contains(path))
      throw Failure(failure_number::file_access, "Can't write " + path + ": Permission denied");
    files_[path] = content;
  }
  void append(const std::string& path, std::string_view content) override {
    files_[path] += content;
  }
  std::unique_ptr<FileInMaking> begin_replace(const std::string& path) override {
    return std::make_unique<InMaking>(*this, path);
  }
  bool exists(const std::string& path) const override { return files_.contains(path); }
  std::string current_directory() const override { return "/console"; }
  std::unique_ptr<ConsoleFile> console_file(const std::string& name) override {
    return std::make_unique<OnlyConsoleFile>(*this, name);
  }
  std::unique_ptr<FileReader> open(const std::string& path) const override {
    const auto file = files_.find(path);
    const bool readable = file != files_.end() && !unreadable_.contains(path);
    return readable ? std::make_unique<Reader>(file->second) : nullptr;
  }
  bool same_file(const std::string& path, const std::string& other) const override {
    return path == other;
  }

  // Takes the right to replace the file away, or gives it back.
  void set_writable(const std::string& path, bool writable) {
    if (writable) {
      unwritable_.erase(path);
    } else {
      unwritable_.insert(path);
    }
  }

  // Takes the right to read the file away, or gives it back.
  void set_readable(const std::string& path, bool readable) {
    if (readable) {
      unreadable_.erase(path);
    } else {
      unreadable_.insert(path);
    }
  }

 private:
  class Reader final : public FileReader {
   public:
    explicit Reader(std::string content) : content_(std::move(content)) {}
    std::string read(std::size_t most) override {
      std::string piece = content_.substr(at_, most);
      at_ += piece.size();
      return piece;
    }
    std::uint64_t size() const override { return content_.size(); }

   private:
    std::string content_;
    std::size_t at_ = 0;
  };

  // No other console has these files.
  class OnlyConsoleFile final : public ConsoleFile {
   public:
    OnlyConsoleFile(MemoryFiles& files, std::string name) : files_(files), name_(std::move(name)) {}
    std::vector<std::string> take_over() override {
      const auto left = files_.read(name_);
      return left ? std::vector<std::string>{*left} : std::vector<std::string>();
    }
    void replace(std::string_view content) override { files_.replace(name_, content); }

   private:
    MemoryFiles& files_;
    std::string name_;
  };

  class InMaking final : public FileInMaking {
   public:
    InMaking(MemoryFiles& files, std::string path) : files_(files), path_(std::move(path)) {}
    void append(std::string_view piece) override { content_ += piece; }
    void finish() override { files_.replace(path_, content_); }

   private:
    MemoryFiles& files_;
    std::string path_;
    std::string content_;
  };

  std::map<std::string, std::string> files_;
  std::set<std::string> unreadable_;
  std::set<std::string> unwritable_;
};

}  // namespace lineweir::platform
