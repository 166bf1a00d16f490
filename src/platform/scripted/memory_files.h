#pragma once

#include <map>
#include <string>

#include "platform/files.h"

namespace lineweir::platform {

// Files that are in memory and last as long as this object.
class MemoryFiles final : public Files {
 public:
  std::optional<std::string> read(const std::string& path) const override {
    const auto file = files_.find(path);
    if (file == files_.end()) return std::nullopt;
    return file->second;
  }
  void replace(const std::string& path, std::string_view content) override {
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

 private:
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
};

}  // namespace lineweir::platform
