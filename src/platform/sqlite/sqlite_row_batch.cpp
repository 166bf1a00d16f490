#include "platform/sqlite/sqlite_row_batch.h"

#include <chrono>
#include <optional>
#include <utility>

namespace lineweir::platform {
namespace {

// How long a program that is in the way is waited for. No cancel is heard meanwhile.
constexpr LockWait lock_wait{20};

// The pause before the next wait, for what fails without any.
constexpr std::chrono::milliseconds pause_between_tries{1};

}  // namespace

ThreadedRowBatch::ThreadedRowBatch(const BatchTarget& target)
    : thread_([this, target] { work(target); }) {}

ThreadedRowBatch::~ThreadedRowBatch() {
  cancel();
  thread_.join();
}

void ThreadedRowBatch::add(std::vector<std::string> values, bool apart) {
  const std::lock_guard lock(mutex_);
  rows_.push_back({std::move(values), apart});
  changed_.notify_one();
}

std::size_t ThreadedRowBatch::waiting() const {
  const std::lock_guard lock(mutex_);
  return rows_.size();
}

void ThreadedRowBatch::store(bool apart_too) {
  const std::lock_guard lock(mutex_);
  to_store_ = true;
  apart_too_ = apart_too;
  changed_.notify_one();
}

void ThreadedRowBatch::cancel() {
  const std::lock_guard lock(mutex_);
  cancelled_ = true;
  changed_.notify_one();
}

RowBatch::Progress ThreadedRowBatch::progress() const {
  const std::lock_guard lock(mutex_);
  return progress_;
}

void ThreadedRowBatch::work(const BatchTarget& target) {
  try {
    std::optional<StagedRows> staged;
    const bool stored = until_free([&] {
                          staged.emplace(target, lock_wait);
                          return true;
                        }) &&
                        collect(*staged) && store_all(*staged);
    end(stored ? Stage::Stored : Stage::Cancelled);
  } catch (const Failure& failure) {
    end(Stage::Failed, failure);
  } catch (const std::exception& error) {
    end(Stage::Failed, Failure(failure_number::database_io, error.what()));
  }
}

template <class Step>
bool ThreadedRowBatch::until_free(Step step) {
  while (true) {
    try {
      return step();
    } catch (const Failure& failure) {
      if (failure.number() != failure_number::database_in_use) throw;
    }
    std::unique_lock lock(mutex_);
    if (to_store_) progress_.stage = Stage::Waiting;
    if (changed_.wait_for(lock, pause_between_tries, [this] { return cancelled_; })) return false;
  }
}

bool ThreadedRowBatch::collect(StagedRows& staged) {
  while (true) {
    std::deque<Row> rows;
    {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [this] { return cancelled_ || to_store_ || !rows_.empty(); });
      if (cancelled_) return false;
      if (rows_.empty()) return true;
      rows.swap(rows_);
    }
    for (const Row& row : rows) staged.add(row.values, row.apart);
  }
}

bool ThreadedRowBatch::store_all(StagedRows& staged) {
  const auto go_on = [this](std::int64_t done) {
    const std::lock_guard lock(mutex_);
    progress_.stage = Stage::Storing;
    progress_.done = done;
    return !cancelled_;
  };
  return until_free([&] { return staged.store(apart_too_, go_on); });
}

void ThreadedRowBatch::end(Stage stage, std::optional<Failure> failure) {
  const std::lock_guard lock(mutex_);
  progress_.stage = stage;
  progress_.failure = std::move(failure);
}

ImmediateRowBatch::ImmediateRowBatch(const BatchTarget& target)
    : staged_(std::make_unique<StagedRows>(target, LockWait::zero())) {}

template <class Step>
void ImmediateRowBatch::attempt(Step step) const {
  try {
    step();
  } catch (const Failure& failure) {
    progress_.stage = Stage::Failed;
    progress_.failure = failure;
  }
}

void ImmediateRowBatch::add(std::vector<std::string> values, bool apart) {
  if (progress_.stage != Stage::Collecting) return;
  attempt([&] { staged_->add(values, apart); });
}

void ImmediateRowBatch::store(bool apart_too) {
  if (progress_.stage != Stage::Collecting) return;
  apart_too_ = apart_too;
  attempt([&] { store_now(); });
}

void ImmediateRowBatch::store_now() const {
  try {
    staged_->store(apart_too_, [this](std::int64_t done) {
      progress_.done = done;
      return true;
    });
    progress_.stage = Stage::Stored;
  } catch (const Failure& failure) {
    if (failure.number() != failure_number::database_in_use) throw;
    progress_.stage = Stage::Waiting;
  }
}

RowBatch::Progress ImmediateRowBatch::progress() const {
  if (progress_.stage == Stage::Waiting) attempt([&] { store_now(); });
  return progress_;
}

void ImmediateRowBatch::cancel() {
  if (progress_.stage == Stage::Collecting || progress_.stage == Stage::Waiting) {
    progress_.stage = Stage::Cancelled;
  }
}

}  // namespace lineweir::platform
