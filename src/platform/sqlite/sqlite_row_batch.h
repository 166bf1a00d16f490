#pragma once

#include <condition_variable>
#include <deque>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>

#include "platform/row_batch.h"
#include "platform/sqlite/staged_rows.h"

namespace lineweir::platform {

// A batch whose work is done on a thread of its own.
class ThreadedRowBatch final : public RowBatch {
 public:
  explicit ThreadedRowBatch(const BatchTarget& target);
  // Waits until the thread has given up, which takes no longer than a step of storing.
  ~ThreadedRowBatch() override;

  void add(std::vector<std::string> values, bool apart) override;
  std::size_t waiting() const override;
  void store(bool apart_too) override;
  void cancel() override;
  Progress progress() const override;

 private:
  struct Row {
    std::vector<std::string> values;
    bool apart;
  };

  // What the thread does.
  void work(const BatchTarget& target);
  // Runs the step until no other program is in its way; false when the batch was cancelled first.
  template <class Step>
  bool until_free(Step step);
  // Puts the rows aside until they are to be stored; false when the batch was cancelled first.
  bool collect(StagedRows& staged);
  bool store_all(StagedRows& staged);
  void end(Stage stage, std::optional<Failure> failure = std::nullopt);

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  // All under the mutex.
  std::deque<Row> rows_;
  bool to_store_ = false;
  bool apart_too_ = false;
  bool cancelled_ = false;
  Progress progress_;

  std::thread thread_;
};

// A batch without a thread, for a console whose time is not that of the clock: each call does its
// work before it returns. While another program is writing, each question for the progress is a
// try.
class ImmediateRowBatch final : public RowBatch {
 public:
  explicit ImmediateRowBatch(const BatchTarget& target);

  void add(std::vector<std::string> values, bool apart) override;
  std::size_t waiting() const override { return 0; }
  void store(bool apart_too) override;
  void cancel() override;
  Progress progress() const override;

 private:
  template <class Step>
  void attempt(Step step) const;
  void store_now() const;

  std::unique_ptr<StagedRows> staged_;
  bool apart_too_ = false;
  mutable Progress progress_;
};

}  // namespace lineweir::platform
