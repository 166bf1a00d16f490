#include "platform/threaded/write_behind.h"

#include <condition_variable>
#include <mutex>
#include <utility>

#include "base/failure.h"

namespace lineweir::platform {
namespace {

constexpr std::size_t most_behind = 4 << 20;

void require_not_spared(const FileWorld& world, const std::string& path,
                        const SparedFiles& spared) {
  for (const auto& [file, sentence] : spared.files) {
    if (world.files->same_file(path, file)) throw Failure(failure_number::file_access, sentence);
  }
  if (world.is_database(path)) throw Failure(failure_number::file_access, spared.database);
}

}  // namespace

// The mutex is never held while the file is used.
struct WriteBehind::Shared {
  std::mutex mutex;
  std::condition_variable changed;
  std::string bytes;
  bool open = false;
  bool last = false;
  bool done = false;
  std::optional<Failure> failure;
  bool abandoned = false;

  // With the mutex held.
  void check() const {
    if (failure) throw Failure(*failure);
  }
};

WriteBehind::WriteBehind(WorkCrew& crew, FileWorld world, std::string path, SparedFiles spared)
    : shared_(std::make_shared<Shared>()) {
  crew.start([shared = shared_, world = std::move(world), path = std::move(path),
              spared = std::move(spared)] {
    try {
      write(*shared, world, path, spared);
    } catch (const Failure& failure) {
      const std::lock_guard lock(shared->mutex);
      shared->failure = failure;
    }
  });
}

WriteBehind::~WriteBehind() {
  const std::lock_guard lock(shared_->mutex);
  shared_->abandoned = true;
  shared_->changed.notify_all();
}

void WriteBehind::write(Shared& shared, const FileWorld& world, const std::string& path,
                        const SparedFiles& spared) {
  require_not_spared(world, path, spared);
  const auto file = world.files->begin_replace(path);
  for (bool last = false; !last;) {
    std::string bytes;
    {
      std::unique_lock lock(shared.mutex);
      shared.open = true;
      shared.changed.wait(lock,
                          [&] { return shared.abandoned || shared.last || !shared.bytes.empty(); });
      if (shared.abandoned) return;
      bytes = std::exchange(shared.bytes, {});
      last = shared.last;
    }
    file->append(bytes);
  }
  {
    const std::lock_guard lock(shared.mutex);
    if (shared.abandoned) return;
  }
  file->finish();
  const std::lock_guard lock(shared.mutex);
  shared.done = true;
}

bool WriteBehind::ready() {
  const std::lock_guard lock(shared_->mutex);
  shared_->check();
  return shared_->open && shared_->bytes.size() < most_behind;
}

void WriteBehind::append(std::string bytes) {
  const std::lock_guard lock(shared_->mutex);
  shared_->bytes += bytes;
  shared_->changed.notify_all();
}

void WriteBehind::finish() {
  const std::lock_guard lock(shared_->mutex);
  shared_->last = true;
  shared_->changed.notify_all();
}

bool WriteBehind::done() {
  const std::lock_guard lock(shared_->mutex);
  shared_->check();
  return shared_->done;
}

}  // namespace lineweir::platform
