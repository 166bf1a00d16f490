#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/disk_journal/handover_memory.h"
#include "platform/journal/call_mover.h"

namespace lineweir::platform {

// A record on its way into the journal.
struct HandedOver {
  JournalRecord record;
  std::string bytes;
  // Up to where the handover memory is needed no more once the record is in the journal.
  std::uint64_t memory_end = 0;
};

// What the three threads of a journal hand to one another: the loop's, the keeper's, which owns the
// journal's files, and the writer's, which owns the logs. Whoever uses it holds the mutex, and does
// so for moving a few values and never while it uses a file.
struct JournalExchange {
  std::mutex mutex;

  // Names this run of the program.
  std::string run;
  std::uint64_t last_sequence = 0;
  // Only added to by whoever holds the mutex, and only released by the keeper.
  std::optional<HandoverMemory> memory;

  // To the keeper: records that are to be kept, and those that needn't be any more.
  std::condition_variable keeper_wake;
  std::deque<HandedOver> handed_over;
  std::vector<RecordName> stored;

  // To the writer: what is to be done with the logs, in this order.
  std::condition_variable writer_wake;
  std::deque<std::function<void(CallMover&)>> for_writer;

  // To the loop. `tell` may be called by any thread; it is empty once the journal is being left.
  CallJournalState logs;
  std::string journal_trouble;
  std::vector<std::string> replaced;
  std::function<void()> tell;

  // The end, in these steps: the journal is being left; all that was handed over has been given to
  // the writer; the writer has done what it could; the files of this run are gone, or stay since
  // they hold calls that wait.
  bool leaving = false;
  bool all_handed_on = false;
  bool logs_done = false;
  bool files_done = false;
  bool files_gone = false;

  // Adds a record under the next name of this run. With the mutex held.
  void hand_over(JournalRecord record) {
    record.name = {run, ++last_sequence};
    HandedOver handed{std::move(record), {}, 0};
    handed.bytes = journal_bytes(handed.record);
    // Without room the record is still on its way, but only in this process.
    if (memory) {
      memory->add(handed.bytes);
      handed.memory_end = memory->added();
    }
    handed_over.push_back(std::move(handed));
    keeper_wake.notify_one();
  }
};

}  // namespace lineweir::platform
