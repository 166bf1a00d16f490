#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

#include "platform/poster.h"

namespace lineweir {

// A loop that runs posted calls while a test waits for something.
class PumpedPoster final : public platform::Poster {
 public:
  void post(std::function<void()> call) override {
    {
      const std::lock_guard lock(mutex_);
      calls_.push_back(std::move(call));
    }
    posted_.notify_one();
  }

  // False where it doesn't hold within the limit.
  bool run_until(const std::function<bool()>& condition,
                 std::chrono::seconds limit = std::chrono::seconds(30)) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
      std::unique_lock lock(mutex_);
      if (!posted_.wait_until(lock, end, [this] { return !calls_.empty(); })) return false;
      const auto call = std::move(calls_.front());
      calls_.pop_front();
      lock.unlock();
      call();
    }
    return true;
  }

  // Runs what was posted.
  void run_posted() {
    run_until([this] {
      const std::lock_guard lock(mutex_);
      return calls_.empty();
    });
  }

 private:
  std::mutex mutex_;
  std::condition_variable posted_;
  std::deque<std::function<void()>> calls_;
};

}  // namespace lineweir
