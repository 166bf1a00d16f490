#pragma once

#include <deque>
#include <list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/event_loop.h"
#include "platform/journal/call_store.h"

namespace lineweir::platform {

// Moves calls to their logs: when which log is tried, and what waits for what. It knows no time of
// its own and no thread.
class CallMover {
 public:
  // How long a log that took no call is left alone.
  static constexpr Milliseconds retry_pause{250};

  // How long it is left alone when its calls could not all be brought into the file itself.
  static constexpr Milliseconds checkpoint_pause{1000};

  // The engine must outlive this object.
  explicit CallMover(DatabaseEngine& engine) : engine_(engine) {}

  // The record's call waits for its log from now on.
  void take(JournalRecord record);

  // The log is made ready when `work` comes to it, whether calls wait for it or not. Any other is
  // let go as soon as its calls are in its file.
  void use(const std::string& file, const std::string& table, int number_column);

  // Does what is due at this moment.
  void work(Milliseconds now);

  // When `work` has something to do again; nothing before a call is taken.
  std::optional<Milliseconds> next_work() const;

  // What waits after a try that failed.
  CallJournalState state() const;

  // The records that wait for this log, which don't any more.
  std::vector<JournalRecord> take_back(const std::string& file);

  // The records whose calls have come into their logs since the last question.
  std::vector<RecordName> take_stored() { return std::exchange(stored_, {}); }

  // The logs in whose places other files were found since the last question.
  std::vector<std::string> take_replaced() { return std::exchange(replaced_, {}); }

  // No record of the run will come any more; what the logs know of it is removed, where they can
  // be written to now.
  void forget(const std::string& run);

 private:
  struct Log {
    Log(DatabaseEngine& engine, std::string file_name, std::string table_name)
        : file(std::move(file_name)), table(std::move(table_name)), store(engine, file, table) {}

    std::string file;
    std::string table;
    CallStore store;
    std::deque<JournalRecord> waiting;
    // Another one has come into use, so that this one needn't stay open.
    bool former = false;
    // The column that is still to be indexed.
    std::optional<int> number_column;
    std::optional<LogTrouble> trouble;
    // Nothing: at once.
    std::optional<Milliseconds> next_try;
    std::optional<Milliseconds> next_checkpoint;
  };

  Log& log_of(const std::string& file, const std::string& table);
  void work_on(Log& log, Milliseconds now);
  void move_calls(Log& log);
  void prepare(Log& log);
  static void bring_into_file(Log& log, Milliseconds now);
  static bool has_work(const Log& log);

  DatabaseEngine& engine_;
  // In the order of their first calls.
  std::list<Log> logs_;
  // Empty until one is in use.
  std::string log_in_use_;
  std::vector<RecordName> stored_;
  std::vector<std::string> replaced_;
};

}  // namespace lineweir::platform
