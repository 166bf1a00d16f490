#include "platform/disk_journal/journal_keeper.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

namespace lineweir::platform {
namespace {

constexpr auto pause_behind_failure = std::chrono::seconds(1);

// A file that is larger than this and mostly struck out is written anew.
constexpr std::size_t large_file = 1 << 20;

}  // namespace

void JournalKeeper::run() {
  take_over_left();
  for (;;) {
    News news = await_news();
    take(std::move(news.handed_over));
    strike_out(news.stored);
    use_files();
    if (news.logs_done) return finish();
    if (!news.leaving) continue;
    const std::lock_guard lock(exchange_.mutex);
    exchange_.all_handed_on = true;
    exchange_.writer_wake.notify_one();
  }
}

JournalKeeper::News JournalKeeper::await_news() {
  std::unique_lock lock(exchange_.mutex);
  const auto any = [&] {
    return !exchange_.handed_over.empty() || !exchange_.stored.empty() || exchange_.logs_done ||
           (exchange_.leaving && !exchange_.all_handed_on);
  };
  if (failed_) {
    exchange_.keeper_wake.wait_for(lock, pause_behind_failure, any);
  } else {
    exchange_.keeper_wake.wait(lock, any);
  }
  return {std::exchange(exchange_.handed_over, {}), std::exchange(exchange_.stored, {}),
          exchange_.leaving, exchange_.logs_done};
}

void JournalKeeper::take_over_left() {
  try {
    auto left = take_over(places_);
    if (!left) return;
    left_ = std::move(left->journal);
    const std::lock_guard lock(exchange_.mutex);
    for (JournalRecord& record : left->records) {
      exchange_.for_writer.push_back([record](CallMover& mover) { mover.take(record); });
    }
    exchange_.writer_wake.notify_one();
  } catch (const std::system_error&) {
    // They stay, for the next start.
  }
  if (left_ && left_->waiting.empty()) remove_left();
}

// The writer needs no journal: a log that takes the call at once makes it superfluous.
void JournalKeeper::take(std::deque<HandedOver> handed_over) {
  if (handed_over.empty()) return;
  for (const HandedOver& handed : handed_over) {
    kept_.push_back({handed.record.name, handed.bytes, handed.memory_end, false});
  }
  const std::lock_guard lock(exchange_.mutex);
  for (HandedOver& handed : handed_over) {
    exchange_.for_writer.push_back(
        [record = std::move(handed.record)](CallMover& mover) { mover.take(record); });
  }
  exchange_.writer_wake.notify_one();
}

void JournalKeeper::strike_out(const std::vector<RecordName>& stored) {
  for (const RecordName& name : stored) {
    const auto kept = std::ranges::find(kept_, name, &Kept::name);
    if (kept != kept_.end()) {
      memory_end_ = std::max(memory_end_, kept->memory_end);
      kept_.erase(kept);
    } else if (left_) {
      left_->waiting.erase(name);
    }
  }
}

void JournalKeeper::use_files() {
  try {
    write();
    tidy();
    if (left_ && left_->waiting.empty()) remove_left();
    failed_ = false;
    report({});
  } catch (const std::system_error& error) {
    failed_ = true;
    report("The calls can't be kept in " + places_.folder().string() + ": " +
           error.code().message() + ".");
  }
}

bool JournalKeeper::all_written() const { return std::ranges::all_of(kept_, &Kept::written); }

void JournalKeeper::write() {
  if (!all_written()) {
    std::string bytes;
    for (const Kept& kept : kept_) {
      if (!kept.written) bytes += kept.bytes;
    }
    if (!file_) file_ = JournalFile::make(places_.journal(exchange_.run, ++files_made_));
    file_->append(bytes);
    bytes_in_file_ += bytes.size();
    synced_ = false;
    for (Kept& kept : kept_) kept.written = true;
  }
  release_memory();
  if (!synced_) file_->sync();
  synced_ = true;
}

// What is written survives the end of the process without it.
void JournalKeeper::release_memory() {
  if (!exchange_.memory) return;
  if (!kept_.empty()) memory_end_ = std::max(memory_end_, kept_.back().memory_end);
  exchange_.memory->release(memory_end_);
}

void JournalKeeper::tidy() {
  if (!file_ || bytes_in_file_ == 0) return;
  if (kept_.empty()) {
    file_->clear();
    bytes_in_file_ = 0;
  } else if (bytes_in_file_ > large_file) {
    write_anew();
  }
}

void JournalKeeper::write_anew() {
  std::string bytes;
  for (const Kept& kept : kept_) bytes += kept.bytes;
  if (bytes.size() > bytes_in_file_ / 2) return;
  JournalFile anew = JournalFile::make(places_.journal(exchange_.run, ++files_made_));
  anew.append(bytes);
  anew.sync();
  std::swap(*file_, anew);
  bytes_in_file_ = bytes.size();
  anew.remove();
}

void JournalKeeper::remove_left() {
  left_->remove();
  const std::lock_guard lock(exchange_.mutex);
  for (const std::string& run : left_->runs) {
    exchange_.for_writer.push_back([run](CallMover& mover) { mover.forget(run); });
  }
  exchange_.writer_wake.notify_one();
  left_.reset();
}

void JournalKeeper::finish() {
  bool gone = false;
  try {
    if (kept_.empty() && file_) file_->remove();
    gone = kept_.empty();
  } catch (const std::system_error&) {
    // An empty file stays, which the next start removes.
  }
  if (all_written() && exchange_.memory) ::unlink(exchange_.memory->file().c_str());
  const std::lock_guard lock(exchange_.mutex);
  exchange_.files_gone = gone;
  exchange_.files_done = true;
  exchange_.writer_wake.notify_one();
}

void JournalKeeper::report(const std::string& trouble) {
  const std::lock_guard lock(exchange_.mutex);
  if (exchange_.journal_trouble == trouble) return;
  exchange_.journal_trouble = trouble;
  if (exchange_.tell) exchange_.tell();
}

}  // namespace lineweir::platform
