#include "platform/journal/call_mover.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"

namespace lineweir::platform {
namespace {

// Other programs that write to the log wait for as long as a step takes.
constexpr std::size_t most_calls_a_step = 200;

}  // namespace

CallMover::Log& CallMover::log_of(const std::string& file, const std::string& table) {
  const auto found = std::ranges::find_if(
      logs_, [&](const Log& log) { return log.file == file && log.table == table; });
  if (found != logs_.end()) return *found;
  Log& log = logs_.emplace_back(engine_, file, table);
  log.former = !log_in_use_.empty() && file != log_in_use_;
  return log;
}

void CallMover::take(JournalRecord record) {
  Log& log = log_of(record.call.file, record.call.table);
  log.waiting.push_back(std::move(record));
}

void CallMover::use(const std::string& file, const std::string& table, int number_column) {
  log_in_use_ = file;
  Log& used = log_of(file, table);
  used.number_column = number_column;
  // What was in the way may have gone since the last try.
  used.next_try.reset();
  for (Log& log : logs_) {
    log.former = log.file != file;
    if (log.former) log.number_column.reset();
  }
}

void CallMover::work(Milliseconds now) {
  for (Log& log : logs_) {
    if (log.next_try && *log.next_try > now) continue;
    if (!log.waiting.empty() || log.number_column) work_on(log, now);
    if (log.next_checkpoint && *log.next_checkpoint <= now) bring_into_file(log, now);
    if (log.store.take_replaced()) replaced_.push_back(log.file);
  }
  std::erase_if(logs_, [](const Log& log) { return log.former && !has_work(log); });
}

bool CallMover::has_work(const Log& log) {
  return !log.waiting.empty() || log.number_column || log.next_checkpoint;
}

void CallMover::work_on(Log& log, Milliseconds now) {
  try {
    move_calls(log);
    log.trouble.reset();
    log.next_try.reset();
    log.next_checkpoint = now;
  } catch (const Failure& failure) {
    log.trouble = LogTrouble{log.file, failure.number(), failure.what()};
    log.next_try = now + retry_pause;
  }
}

void CallMover::move_calls(Log& log) {
  while (!log.waiting.empty()) {
    const std::size_t count = std::min(log.waiting.size(), most_calls_a_step);
    const auto end = log.waiting.begin() + static_cast<std::ptrdiff_t>(count);
    log.store.put(std::vector<JournalRecord>(log.waiting.begin(), end));
    for (auto record = log.waiting.begin(); record != end; ++record) {
      stored_.push_back(std::move(record->name));
    }
    log.waiting.erase(log.waiting.begin(), end);
  }
  prepare(log);
}

void CallMover::prepare(Log& log) {
  if (!log.number_column) return;
  log.store.index_numbers(*log.number_column);
  log.number_column.reset();
}

void CallMover::bring_into_file(Log& log, Milliseconds now) {
  log.next_checkpoint.reset();
  try {
    if (!log.store.checkpoint()) log.next_checkpoint = now + checkpoint_pause;
  } catch (const Failure&) {
    // The calls are safe beside the file, and the next one that is stored tries again.
  }
}

std::optional<Milliseconds> CallMover::next_work() const {
  std::optional<Milliseconds> first;
  const auto add = [&](Milliseconds due) { first = std::min(first.value_or(due), due); };
  for (const Log& log : logs_) {
    if (!log.waiting.empty() || log.number_column) add(log.next_try.value_or(Milliseconds{0}));
    // Before the log is tried again nothing is done with it.
    if (log.next_checkpoint) {
      add(std::max(*log.next_checkpoint, log.next_try.value_or(Milliseconds{0})));
    }
  }
  return first;
}

CallJournalState CallMover::state() const {
  CallJournalState state;
  for (const Log& log : logs_) {
    if (!log.trouble || log.waiting.empty()) continue;
    state.waiting += static_cast<int>(log.waiting.size());
    state.troubles.push_back(*log.trouble);
  }
  return state;
}

std::vector<JournalRecord> CallMover::take_back(const std::string& file) {
  std::vector<JournalRecord> records;
  for (Log& log : logs_) {
    if (log.file != file) continue;
    std::ranges::move(std::exchange(log.waiting, {}), std::back_inserter(records));
    log.trouble.reset();
  }
  return records;
}

void CallMover::forget(const std::string& run) {
  for (Log& log : logs_) {
    try {
      log.store.forget(run);
    } catch (const Failure&) {
      // What is left is a row that nobody reads.
    }
  }
}

}  // namespace lineweir::platform
