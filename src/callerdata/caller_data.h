#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "callerdata/draft_keeper.h"
#include "callerdata/entry_notice.h"
#include "lines/line_table.h"
#include "state/settings_record.h"

namespace lineweir {

class CallLog;
class CallerDataSender;
class CallerMemory;
class LineTexts;
struct ConsoleState;

// The entry of a caller's details: Form4 and what becomes of its texts. The form holds a call, not
// a line: when the call ends while it is open, what is in it goes to that call's record in the log
// and nowhere else, whoever is on the line by then.
class CallerDataEntry {
 public:
  CallerDataEntry(ConsoleState& state, CallLog& call_log, CallerDataSender& data_sender,
                  LineTexts& line_texts, CallerMemory& caller_memory);

  // The user wants the data of whoever is on the line. A form that holds the call already only
  // comes to the front; one that holds another is loaded anew, and what was typed into it is kept.
  // While nobody is on the line, a call that has ended there and has unsaved texts is shown.
  void show_for_line(int line);

  // The same where a report of the line wants it: the user isn't taken away from the texts of the
  // call before.
  void show_for_answered_line(int line);

  // The line has other data now, from another console: fields of its form that the user hasn't
  // touched follow.
  void data_arrived(int line);

  // These lines have been reported: whom earlier runs have seen on them and not logged is logged.
  void lines_told(const std::set<int>& lines);
  // Behind it, and where lines have been emptied without a report: callers have come or gone.
  void lines_changed();

  // The lines with callers for whom something was typed and not saved, in their order.
  std::vector<int> lines_with_unsaved_data();

  // From this line on there are no lines any more.
  void leave_lines(int first);

  // Takes up what was typed in an earlier run of the program and not saved, and tells of it.
  void restore_drafts();
  // What is being typed stays for the next run.
  void keep_draft();

  // The line of the caller whose data the form holds, and the number of that call; nothing where
  // the form is closed or the call has ended.
  struct HeldCaller {
    int line;
    CallNumber call;
    friend bool operator==(const HeldCaller&, const HeldCaller&) = default;
  };
  std::optional<HeldCaller> held_caller() const;
  // Whether that caller is still the one on the line.
  bool is_on_line(const HeldCaller& caller) const;

  // What the form's button does. Returns whether all that is typed was saved, and with that the
  // form closed.
  bool save();

  // Says it where the user types. It goes with the next change.
  void say(const std::string& remark);

  // Told when the form holds another caller, or another state of the lines.
  std::function<void()> on_held_changed;

  // Which of the fields are in use.
  LogFieldFlags LogFieldOn = all_fields_on();

  // Asks for the telephone number before all else where a log may know the caller.
  bool asks_number_first = false;

 private:
  struct HeldCall {
    int line = no_line;
    CallNumber call = 0;
    // Nothing while the call is on its line.
    std::optional<EndedCall> ended;
  };

  static LogFieldFlags all_fields_on();

  void Form_Load();
  void Form_Unload();
  void TheText_KeyPress(int Index, int& KeyAscii);
  void TheText_Change(int Index);
  void TheText_Edit(int Index, std::string& text, int& caret);
  void Command3D1_Click();
  void DiscardCall_Click();
  void OtherCall_Click();
  void UnloadTimer_Timer();
  void DraftTimer_Timer();

  // Whether this user may enter data; says so where not.
  bool allowed();
  void show(int line, CallNumber call);
  bool holds_ended_call_of(int line) const;
  bool anybody_on(int line) const;
  void call_ended(const EndedCall& ended);
  // The caller of a group that was left, or of the run before, is seen again: what was typed for
  // him is his once more.
  void take_up_left_call(int line);
  bool is_still_there(const EndedCall& left, int line);
  void fill_texts();
  void follow_line();
  void show_notice();
  void show_buttons();
  EntryWork work() const;
  bool save_to_line();
  bool save_to_log(platform::LoggedCall call);
  void store(int line, const EntryTexts& typed);
  // Closes the form; nothing in it is a draft any more.
  void close_done();

  ConsoleState& state_;
  CallLog& call_log_;
  CallerDataSender& data_sender_;
  LineTexts& line_texts_;
  CallerMemory& caller_memory_;
  DraftKeeper drafts_;
  HeldCall held_;
  // The call for which the form is about to be loaded; 0 for the one on the line.
  CallNumber chosen_call_ = 0;
  // What the line had when the fields were last filled.
  EntryTexts had_;
  EntryNotice notice_;
};

}  // namespace lineweir
