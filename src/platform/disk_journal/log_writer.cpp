#include "platform/disk_journal/log_writer.h"

#include <chrono>
#include <utility>

namespace lineweir::platform {
namespace {

using Clock = std::chrono::steady_clock;

Milliseconds now() {
  return std::chrono::duration_cast<Milliseconds>(Clock::now().time_since_epoch());
}

}  // namespace

void LogWriter::run() {
  const auto engine = make_engine_();
  CallMover mover(*engine);
  while (work(mover)) {
  }
  finish(mover);
}

bool LogWriter::work(CallMover& mover) {
  std::deque<std::function<void(CallMover&)>> orders;
  bool last = false;
  {
    std::unique_lock lock(exchange_.mutex);
    const auto news = [&] { return !exchange_.for_writer.empty() || exchange_.all_handed_on; };
    if (const auto next = mover.next_work()) {
      exchange_.writer_wake.wait_until(lock, Clock::time_point(*next + Milliseconds{1}), news);
    } else {
      exchange_.writer_wake.wait(lock, news);
    }
    orders = std::exchange(exchange_.for_writer, {});
    last = exchange_.all_handed_on;
  }
  for (const auto& order : orders) order(mover);
  mover.work(now());
  pass_on(mover);
  return !last;
}

void LogWriter::pass_on(CallMover& mover) {
  const std::vector<RecordName> stored = mover.take_stored();
  const std::vector<std::string> replaced = mover.take_replaced();
  CallJournalState state = mover.state();

  const std::lock_guard lock(exchange_.mutex);
  if (!stored.empty()) {
    exchange_.stored.insert(exchange_.stored.end(), stored.begin(), stored.end());
    exchange_.keeper_wake.notify_one();
  }
  exchange_.replaced.insert(exchange_.replaced.end(), replaced.begin(), replaced.end());
  const bool news = !replaced.empty() || exchange_.logs != state;
  exchange_.logs = std::move(state);
  if (news && exchange_.tell) exchange_.tell();
}

void LogWriter::finish(CallMover& mover) {
  std::unique_lock lock(exchange_.mutex);
  exchange_.logs_done = true;
  exchange_.keeper_wake.notify_one();
  exchange_.writer_wake.wait(lock, [&] { return exchange_.files_done; });
  const bool forget = exchange_.files_gone && exchange_.last_sequence > 0;
  const auto orders = std::exchange(exchange_.for_writer, {});
  lock.unlock();
  for (const auto& order : orders) order(mover);
  if (forget) mover.forget(exchange_.run);
}

}  // namespace lineweir::platform
