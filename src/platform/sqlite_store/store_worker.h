#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <variant>
#include <vector>

#include "platform/sqlite_store/store_file.h"
#include "platform/store_records.h"

namespace lineweir::platform {

// The thread that works on a store's file, one piece of work behind the other. Writes that wait
// together go to the disk together.
class StoreWorker {
 public:
  // Run in the thread. The trouble is a sentence, empty where all is right again.
  using TellTrouble = std::function<void(std::string trouble)>;
  using TellWritten = std::function<void(bool written)>;
  // Uses the database. What it throws becomes the trouble.
  using Use = std::function<void(StoreFile& file)>;
  // What came of it: empty, or the trouble.
  using Used = std::function<void(const std::string& failure)>;

  StoreWorker(std::filesystem::path file, std::chrono::milliseconds lock_wait,
              TellTrouble tell_trouble);
  // Does what waits first.
  ~StoreWorker();
  StoreWorker(const StoreWorker&) = delete;
  StoreWorker& operator=(const StoreWorker&) = delete;

  void write(std::vector<StoreChange> changes, TellWritten tell);
  void use(Use use, Used used);

 private:
  struct Write {
    std::vector<StoreChange> changes;
    TellWritten tell;
  };
  struct OtherUse {
    Use use;
    Used used;
  };
  using Work = std::variant<Write, OtherUse>;

  void add(Work work);
  void run();
  // What is to be done next: one use, or writes; nothing once all is done and this object ends.
  std::vector<Work> take();
  void carry_out(OtherUse& other);
  void carry_out_writes(std::vector<Work>& works);
  std::string attempt(const std::function<void()>& action);
  void set_trouble(std::string trouble);

  // Of the thread alone.
  StoreFile file_;
  TellTrouble tell_trouble_;
  std::string trouble_;
  // Reading says nothing of whether writing works again.
  bool writes_fail_ = false;

  std::mutex mutex_;
  std::condition_variable added_;
  std::deque<Work> waiting_;
  bool ending_ = false;
  // Begins when all of the above is there.
  std::thread thread_;
};

}  // namespace lineweir::platform
