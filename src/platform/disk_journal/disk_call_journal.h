#pragma once

#include <filesystem>
#include <functional>
#include <memory>

#include "platform/call_journal.h"
#include "platform/database.h"

namespace lineweir::platform {

// The journal of a console in its settings folder. Several consoles may be started in one folder,
// and several may write to one log.
//
// What `put` promises is kept in three steps. It copies the record into memory that outlives the
// process, and returns. A thread of its own, the keeper, writes the record to the file
// "calls-*.journal" and brings it to the disk within a few milliseconds, however long the log
// takes: from then on it survives the loss of power. Another thread, the writer, brings it into the
// log. The thread that calls `put` uses no file, since it would wait as long as the disk does even
// for a plain write to a file that another thread is bringing to the disk.
//
// What is left by a run that was killed, or ended while calls waited, is taken over by the next
// start in the folder, from the file and from the memory. The memory is lost with the machine: of a
// process that is killed, on a machine that goes down before the next start, the calls of the last
// few milliseconds are lost where the keeper had not written them.
class DiskCallJournal final : public CallJournal {
 public:
  struct Setup {
    // The settings folder, which must exist.
    std::filesystem::path folder;
    // Where the memory lies: a file system without a disk.
    std::filesystem::path memory_folder = "/dev/shm";
    // Called by the writer's thread, which alone uses the engine and may wait in it.
    std::function<std::unique_ptr<DatabaseEngine>()> make_engine;
    // Runs a call on the loop's thread as soon as it can; called by any thread.
    std::function<void(std::function<void()>)> post;
  };

  explicit DiskCallJournal(Setup setup);

  // Brings what waits into its logs if they take it now, and all of it to the disk. Returns within
  // a few seconds even if a disk doesn't answer; what was not done then is done by the next start.
  ~DiskCallJournal() override;

  DiskCallJournal(const DiskCallJournal&) = delete;
  DiskCallJournal& operator=(const DiskCallJournal&) = delete;

  void put(LoggedCall call) override;
  void use(const std::string& file, const std::string& table, int number_column) override;
  void redirect(const std::string& from, const std::string& to) override;
  CallJournalState state() const override;

 private:
  struct Running;

  void tell();

  // Outlives this object where its threads do.
  std::shared_ptr<Running> running_;
  CallJournalState told_;
  // Lets a posted call know that this object is gone.
  std::shared_ptr<DiskCallJournal*> self_;
};

}  // namespace lineweir::platform
