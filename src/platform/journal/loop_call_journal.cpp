#include "platform/journal/loop_call_journal.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/journal/call_mover.h"

namespace lineweir::platform {

LoopCallJournal::LoopCallJournal(EventLoop& loop, DatabaseEngine& engine)
    : loop_(loop), mover_(std::make_unique<CallMover>(engine)) {}

LoopCallJournal::~LoopCallJournal() {
  loop_.cancel(next_work_);
  loop_.cancel(next_tell_);
}

void LoopCallJournal::put(LoggedCall call) {
  mover_->take({{}, {}, std::move(call)});
  work();
}

void LoopCallJournal::use(const std::string& file, const std::string& table, int number_column) {
  mover_->use(file, table, number_column);
  work();
}

void LoopCallJournal::redirect(const std::string& from, const std::string& to) {
  for (JournalRecord& record : mover_->take_back(from)) {
    record.call.file = to;
    mover_->take(std::move(record));
  }
  work();
}

CallJournalState LoopCallJournal::state() const {
  CallJournalState state = mover_->state();
  if (state.waiting > 0) state.journal_trouble = trouble_;
  return state;
}

void LoopCallJournal::set_trouble(const std::string& sentence) {
  trouble_ = sentence;
  tell_soon();
}

void LoopCallJournal::work() {
  mover_->work(loop_.now());
  mover_->take_stored();
  std::ranges::move(mover_->take_replaced(), std::back_inserter(replaced_));
  loop_.cancel(next_work_);
  if (const auto next = mover_->next_work()) {
    next_work_ = loop_.schedule(*next - loop_.now(), [this] { work(); });
  }
  tell_soon();
}

void LoopCallJournal::tell_soon() {
  loop_.cancel(next_tell_);
  next_tell_ = loop_.schedule(Milliseconds{0}, [this] { tell(); });
}

void LoopCallJournal::tell() {
  for (const std::string& file : std::exchange(replaced_, {})) {
    on_replaced(file);
  }
  const CallJournalState now = state();
  if (now == told_) return;
  told_ = now;
  on_change();
}

}  // namespace lineweir::platform
