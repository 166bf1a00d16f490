#include "platform/threaded/read_ahead.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

#include "base/failure.h"

namespace lineweir::platform {
namespace {

// What is understood in a few milliseconds.
constexpr std::size_t piece_size = 128 << 10;
constexpr std::size_t most_ahead = 8;

}  // namespace

// The mutex is never held while the file is used.
struct ReadAhead::Shared {
  std::mutex mutex;
  std::condition_variable changed;
  // The last one is empty.
  std::deque<std::string> pieces;
  std::uint64_t size = 0;
  bool unreadable = false;
  std::optional<Failure> failure;
  bool abandoned = false;
};

ReadAhead::ReadAhead(WorkCrew& crew, std::shared_ptr<const StreamedFiles> files, std::string path)
    : shared_(std::make_shared<Shared>()) {
  crew.start([shared = shared_, files = std::move(files), path = std::move(path)] {
    try {
      read(*shared, *files, path);
    } catch (const Failure& failure) {
      const std::lock_guard lock(shared->mutex);
      shared->failure = failure;
    }
  });
}

ReadAhead::~ReadAhead() {
  const std::lock_guard lock(shared_->mutex);
  shared_->abandoned = true;
  shared_->changed.notify_all();
}

void ReadAhead::read(Shared& shared, const StreamedFiles& files, const std::string& path) {
  const auto file = files.open(path);
  {
    const std::lock_guard lock(shared.mutex);
    shared.unreadable = file == nullptr;
    if (shared.unreadable) return;
    shared.size = file->size();
  }
  for (bool at_end = false; !at_end;) {
    std::string piece = file->read(piece_size);
    at_end = piece.empty();
    std::unique_lock lock(shared.mutex);
    shared.changed.wait(lock,
                        [&] { return shared.abandoned || shared.pieces.size() < most_ahead; });
    if (shared.abandoned) return;
    shared.pieces.push_back(std::move(piece));
  }
}

std::optional<std::string> ReadAhead::take() {
  const std::lock_guard lock(shared_->mutex);
  if (shared_->pieces.empty()) {
    if (shared_->failure) throw Failure(*shared_->failure);
    return std::nullopt;
  }
  if (shared_->pieces.front().empty()) return std::string();
  std::string piece = std::move(shared_->pieces.front());
  shared_->pieces.pop_front();
  shared_->changed.notify_all();
  return piece;
}

bool ReadAhead::unreadable() const {
  const std::lock_guard lock(shared_->mutex);
  return shared_->unreadable;
}

std::uint64_t ReadAhead::size() const {
  const std::lock_guard lock(shared_->mutex);
  return shared_->size;
}

}  // namespace lineweir::platform
