#pragma once

#include <functional>
#include <memory>

#include "platform/disk_journal/journal_exchange.h"

namespace lineweir::platform {

// The thread that alone writes to the logs. It takes the calls from the keeper, brings them into
// their logs as soon as these take them, and tells the keeper which are there.
class LogWriter {
 public:
  // The exchange must outlive this object. The engine is made, used and ended on the thread.
  LogWriter(JournalExchange& exchange, std::function<std::unique_ptr<DatabaseEngine>()> make_engine)
      : exchange_(exchange), make_engine_(std::move(make_engine)) {}

  // Works until the journal is being left.
  void run();

 private:
  // False when everything that could be done is done.
  bool work(CallMover& mover);
  void pass_on(CallMover& mover);
  void finish(CallMover& mover);

  JournalExchange& exchange_;
  std::function<std::unique_ptr<DatabaseEngine>()> make_engine_;
};

}  // namespace lineweir::platform
