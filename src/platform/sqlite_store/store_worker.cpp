#include "platform/sqlite_store/store_worker.h"

#include <exception>
#include <utility>

#include "base/failure.h"
#include "platform/sqlite_store/write_batch.h"

namespace lineweir::platform {
namespace {

// So many writes share one wait for the disk.
constexpr std::size_t most_writes = 64;

// What says nothing about the open database itself, so that it stays open. One that was deleted
// can still be copied.
bool leaves_database(const Failure& failure) {
  const int number = failure.number();
  return number == failure_number::database_in_use || number == failure_number::disk_full ||
         number == failure_number::database_not_found;
}

}  // namespace

StoreWorker::StoreWorker(std::filesystem::path file, std::chrono::milliseconds lock_wait,
                         TellTrouble tell_trouble)
    : file_(std::move(file), lock_wait),
      tell_trouble_(std::move(tell_trouble)),
      thread_([this] { run(); }) {}

StoreWorker::~StoreWorker() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  added_.notify_one();
  thread_.join();
}

void StoreWorker::write(std::vector<StoreChange> changes, TellWritten tell) {
  add(Write{std::move(changes), std::move(tell)});
}

void StoreWorker::use(Use use, Used used) { add(OtherUse{std::move(use), std::move(used)}); }

void StoreWorker::add(Work work) {
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(work));
  }
  added_.notify_one();
}

void StoreWorker::run() {
  for (auto works = take(); !works.empty(); works = take()) {
    if (auto* other = std::get_if<OtherUse>(&works.front())) {
      carry_out(*other);
    } else {
      carry_out_writes(works);
    }
  }
}

std::vector<StoreWorker::Work> StoreWorker::take() {
  std::unique_lock lock(mutex_);
  added_.wait(lock, [this] { return ending_ || !waiting_.empty(); });
  std::vector<Work> taken;
  while (!waiting_.empty() && taken.size() < most_writes) {
    const bool is_write = std::holds_alternative<Write>(waiting_.front());
    if (!is_write && !taken.empty()) break;
    taken.push_back(std::move(waiting_.front()));
    waiting_.pop_front();
    if (!is_write) break;
  }
  return taken;
}

void StoreWorker::carry_out(OtherUse& other) {
  const std::string failure = attempt([&] { other.use(file_); });
  other.used(failure);
}

void StoreWorker::carry_out_writes(std::vector<Work>& works) {
  std::vector<const std::vector<StoreChange>*> writes;
  for (const Work& work : works) writes.push_back(&std::get<Write>(work).changes);
  BatchOutcome outcome;
  const std::string failure = attempt([&] {
    outcome = write_batch(file_.ready(), writes);
    file_.require_in_place();
  });
  if (!failure.empty()) outcome.written.assign(works.size(), false);
  const std::string trouble = failure.empty() ? outcome.trouble : failure;
  writes_fail_ = !trouble.empty();
  set_trouble(trouble);
  for (std::size_t i = 0; i < works.size(); ++i) {
    std::get<Write>(works[i]).tell(outcome.written[i]);
  }
}

std::string StoreWorker::attempt(const std::function<void()>& action) {
  std::string trouble;
  try {
    action();
  } catch (const Failure& failure) {
    trouble = failure.what();
    if (!leaves_database(failure)) file_.let_go();
  } catch (const std::exception& error) {
    trouble = std::string("The store could not be used: ") + error.what() + ".";
    file_.let_go();
  }
  if (!trouble.empty() || !writes_fail_) set_trouble(trouble);
  return trouble;
}

void StoreWorker::set_trouble(std::string trouble) {
  if (trouble == trouble_) return;
  trouble_ = std::move(trouble);
  tell_trouble_(trouble_);
}

}  // namespace lineweir::platform
