#pragma once

#include <memory>

#include "platform/call_journal.h"
#include "platform/database.h"
#include "platform/event_loop.h"

namespace lineweir::platform {

class CallMover;

// A journal in memory whose calls go to their logs on the loop: at once where the log takes them,
// and otherwise as soon as it does. It writes nothing beside the logs, so that what waits lasts as
// long as this object.
class LoopCallJournal : public CallJournal {
 public:
  // Both must outlive this object.
  LoopCallJournal(EventLoop& loop, DatabaseEngine& engine);
  ~LoopCallJournal() override;
  LoopCallJournal(const LoopCallJournal&) = delete;
  LoopCallJournal& operator=(const LoopCallJournal&) = delete;

  void put(LoggedCall call) override;
  void use(const std::string& file, const std::string& table, int number_column) override;
  void redirect(const std::string& from, const std::string& to) override;
  CallJournalState state() const override;

  // From now on what waits would be lost with this object, for the reason in the sentence; with an
  // empty one it would not.
  void set_trouble(const std::string& sentence);

 private:
  void work();
  void tell();
  void tell_soon();

  EventLoop& loop_;
  std::unique_ptr<CallMover> mover_;
  std::string trouble_;
  CallJournalState told_;
  std::vector<std::string> replaced_;
  EventLoop::CallId next_work_ = 0;
  EventLoop::CallId next_tell_ = 0;
};

}  // namespace lineweir::platform
