#include "platform/threaded/work_crew.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace lineweir::platform {

struct WorkCrew::Count {
  std::mutex mutex;
  std::condition_variable changed;
  int working = 0;
};

WorkCrew::WorkCrew() : count_(std::make_shared<Count>()) {}

void WorkCrew::start(std::function<void()> work) {
  {
    const std::lock_guard lock(count_->mutex);
    ++count_->working;
  }
  std::thread([count = count_, work = std::move(work)]() mutable {
    work();
    // What it owns goes before it counts as done.
    work = nullptr;
    const std::lock_guard lock(count->mutex);
    --count->working;
    count->changed.notify_all();
  }).detach();
}

bool WorkCrew::wait(std::chrono::milliseconds longest) {
  std::unique_lock lock(count_->mutex);
  return count_->changed.wait_for(lock, longest, [this] { return count_->working == 0; });
}

}  // namespace lineweir::platform
