#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/failure.h"
#include "callerdata/entry_drafts.h"
#include "platform/console_file.h"

namespace lineweir {

class CallLog;
struct ConsoleState;

// Keeps the drafts, and a file of them, so that they outlive the program however it ends. What was
// saved of the callers who are on their lines stands there too: where the program ends before their
// calls do, its next run logs them.
class DraftKeeper {
 public:
  DraftKeeper(ConsoleState& state, CallLog& call_log);

  // Null where there is none; see EntryDrafts.
  const EntryDraft* find(CallNumber call) { return drafts_.find(call); }
  const EntryDraft* ended_on(int line) const { return drafts_.ended_on(line); }

  // Those for whom something wasn't saved: each line once, in their order.
  std::vector<int> lines_of_present_calls() const;

  void keep(EntryDraft draft);
  // Nothing that was typed for the call is to be saved any more.
  void settle(CallNumber call);

  // Callers have come or gone, or something else is known of one.
  void lines_changed() { write(); }

  // These lines have been told: calls of earlier runs on them that no run has logged go to the log,
  // and those of other groups, whose end nobody may see.
  void log_left_calls(const std::set<int>& told);

  // What is known of the caller of such a call is now this. False, and nothing is changed, where it
  // is none.
  bool complete_left(CallNumber call, const EntryTexts& texts);

  // Those of calls that have left this line without an end that was seen, the latest one first.
  std::vector<EntryDraft> left_on(int line) const { return drafts_.left_on(line); }

  // What was typed for the former call was typed for this one, as they are one call that was seen
  // again.
  void take_up(CallNumber former, CallNumber call);

  // The call's record goes to the journal next.
  void logging(int line, const EndedCall& ended);

  // The draft's call has ended so, if there is a draft of it.
  void call_ended(const EndedCall& ended);

  // Takes up what earlier runs of the program have left, and returns what wasn't saved of it.
  std::vector<EntryDraft> restore();

 private:
  // What awaits the end of the call that is on the line.
  std::optional<platform::LoggedCall> unlogged_on(int line);
  // The drafts as the next run is to find them.
  std::vector<EntryDraft> left_by_this_run();

  // Brings the file up to date. It never waits for the disk; where it can't be written the drafts
  // last as long as the program, and the user is told so once.
  void write();
  void tell(const Failure& failure);

  ConsoleState& state_;
  CallLog& call_log_;
  EntryDrafts drafts_;
  std::unique_ptr<platform::ConsoleFile> file_;
  // What the file holds; nothing where that isn't in one file yet.
  std::optional<std::string> written_ = "";
  // The reason, of which the user was told, why the file can't be written.
  std::string told_;
};

}  // namespace lineweir
