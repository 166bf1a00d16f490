#include "platform/scripted/scripted_user_files.h"

#include <utility>

#include "base/failure.h"

namespace lineweir::platform {
namespace {

constexpr std::size_t piece_size = 128 << 10;

}  // namespace

class ScriptedUserFiles::Source final : public FileSource {
 public:
  Source(const bool& stalled, const StreamedFiles& files, std::string path)
      : stalled_(stalled), files_(files), path_(std::move(path)) {}

  std::optional<std::string> take() override {
    open();
    return stalled_ || !file_ ? std::nullopt : std::optional(file_->read(piece_size));
  }
  bool unreadable() const override { return opened_ && !file_; }
  std::uint64_t size() const override { return file_ ? file_->size() : 0; }

 private:
  void open() {
    if (stalled_ || opened_) return;
    opened_ = true;
    file_ = files_.open(path_);
  }

  const bool& stalled_;
  const StreamedFiles& files_;
  std::string path_;
  bool opened_ = false;
  std::unique_ptr<FileReader> file_;
};

class ScriptedUserFiles::Target final : public FileTarget {
 public:
  Target(const bool& stalled, StreamedFiles& files, DatabaseEngine& databases, std::string path,
         SparedFiles spared)
      : stalled_(stalled),
        files_(files),
        databases_(databases),
        path_(std::move(path)),
        spared_(std::move(spared)) {}

  bool ready() override {
    if (stalled_) return false;
    if (!file_) open();
    return true;
  }
  void append(std::string bytes) override { bytes_ += bytes; }
  void finish() override { last_ = true; }
  bool done() override {
    if (!ready() || !last_) return false;
    if (!std::exchange(done_, true)) {
      file_->append(bytes_);
      file_->finish();
    }
    return true;
  }

 private:
  void open() {
    for (const auto& [file, sentence] : spared_.files) {
      if (files_.same_file(path_, file)) throw Failure(failure_number::file_access, sentence);
    }
    if (databases_.is_database(path_)) throw Failure(failure_number::file_access, spared_.database);
    file_ = files_.begin_replace(path_);
  }

  const bool& stalled_;
  StreamedFiles& files_;
  DatabaseEngine& databases_;
  std::string path_;
  SparedFiles spared_;
  std::string bytes_;
  bool last_ = false;
  bool done_ = false;
  std::unique_ptr<FileInMaking> file_;
};

std::unique_ptr<FileSource> ScriptedUserFiles::read(const std::string& path) {
  return std::make_unique<Source>(stalled_, *files_, path);
}

std::unique_ptr<FileTarget> ScriptedUserFiles::write(const std::string& path, SparedFiles spared) {
  return std::make_unique<Target>(stalled_, *files_, databases_, path, std::move(spared));
}

}  // namespace lineweir::platform
