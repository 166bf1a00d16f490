#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace lineweir::platform {

// Threads for work that may never come back, so that nobody may wait for it without a limit. What a
// piece of work uses it must own.
class WorkCrew {
 public:
  WorkCrew();

  // Does the work in a thread of its own. It must not throw.
  void start(std::function<void()> work);

  // Waits for all of them; false where some are still at work after that time. They go with the
  // process then.
  bool wait(std::chrono::milliseconds longest);

 private:
  struct Count;

  // Outlives this object where its threads do.
  std::shared_ptr<Count> count_;
};

}  // namespace lineweir::platform
