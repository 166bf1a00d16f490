#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "callerdata/entry_drafts.h"
#include "platform/console_file.h"

namespace lineweir {

class CallLog;
struct ConsoleState;

// Keeps the drafts, and a file of them, so that they outlive the program however it ends.
class DraftKeeper {
 public:
  DraftKeeper(ConsoleState& state, CallLog& call_log);

  // Null where there is none; see EntryDrafts.
  const EntryDraft* find(CallNumber call) { return drafts_.find(call); }
  const EntryDraft* ended_on(int line) const { return drafts_.ended_on(line); }

  // Each line once, in their order.
  std::vector<int> lines_of_present_calls() const;

  void keep(EntryDraft draft);
  void drop(CallNumber call);

  // Those of calls that have left this line without an end that was seen, the latest one first.
  std::vector<EntryDraft> left_on(int line) const { return drafts_.left_on(line); }

  // The former call's draft belongs to this one, as they are one call that was seen again.
  void take_up(CallNumber former, CallNumber call);

  // The draft's call has ended so, if there is a draft of it.
  void call_ended(const EndedCall& ended);

  // Takes up what earlier runs of the program have left, and returns it.
  std::vector<EntryDraft> restore();

 private:
  // Brings the file up to date. It never waits for the disk; where it can't be written the drafts
  // last as long as the program.
  void write();

  ConsoleState& state_;
  CallLog& call_log_;
  EntryDrafts drafts_;
  std::unique_ptr<platform::ConsoleFile> file_;
  // What the file holds; nothing where that isn't known, or isn't in one file yet.
  std::optional<std::string> written_;
};

}  // namespace lineweir
