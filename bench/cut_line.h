#pragma once

#include <atomic>
#include <filesystem>
#include <thread>

namespace lineweir::bench {

// Carries what goes between a database's socket and a server, and can be cut: what is sent in a
// direction that is cut stays where it is, as in a network that drops it, and no end is told.
class CutLine {
 public:
  // A socket in the folder `here`, for the database's in `there`.
  CutLine(const std::filesystem::path& here, const std::filesystem::path& there);
  ~CutLine();
  CutLine(const CutLine&) = delete;
  CutLine& operator=(const CutLine&) = delete;

  std::atomic<bool> carries_there{true};
  std::atomic<bool> carries_back{true};

 private:
  void work();

  std::filesystem::path there_;
  int listener_;
  std::atomic<bool> ends_{false};
  std::thread thread_;
};

}  // namespace lineweir::bench
