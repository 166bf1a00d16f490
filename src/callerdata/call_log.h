#pragma once

#include <compare>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "callerdata/ended_call.h"
#include "forms/entry_fields.h"
#include "lines/caller_record.h"
#include "platform/call_journal.h"
#include "platform/database.h"

namespace lineweir {

struct ConsoleState;

// Hands the records of calls that have ended to the journal, which brings them into the call log.
class CallLog {
 public:
  explicit CallLog(ConsoleState& state);

  // The call on the line has ended. If a log is chosen and the record holds data, the date of the
  // call is filled in and the record goes to the log, now or as soon as the log takes it. A log
  // that takes none is no failure here.
  void log(int line);

  // The call that is on the line now, or will be the next one there: another number as soon as the
  // call has ended.
  CallNumber call_on(int line);

  // The call has left the line without an end that is logged. One that goes on without this console
  // is logged as far as it is known, since its end may never be seen here; if the console comes
  // back to its group and sees the end, the row is brought up to date.
  void leave(int line, CallEnd how);

  // Told of the call on the line right before its record goes to the journal.
  std::function<void(int line, const EndedCall& ended)> on_logging;

  // Told of each call that leaves its line, while row and record still have its texts.
  std::function<void(const EndedCall& ended)> on_call_ended;

  // Told when a log was chosen.
  std::function<void()> on_chosen;

  // The record that the call on the line would have if it ended now.
  platform::LoggedCall call_so_far(int line);

  // What would be logged of the call, in the place of its row where that is in the log already;
  // nothing where it wouldn't be.
  std::optional<platform::LoggedCall> to_be_logged(int line);

  // Lines have been reported.
  void lines_told();
  // For a call that is on its line: when lines were reported last, as nobody knows who has come
  // since where the link is gone. Nothing before the first report.
  std::optional<LastSeen> last_seen() const;

  // The number of the call on the line; nothing where none was asked for.
  std::optional<CallNumber> known_call_on(int line) const;

  // When that call was seen first, as it is one that is on its line.
  platform::DateTime noticed(int line);

  // A number that no call has had.
  CallNumber new_call() { return ++last_call_; }

  // A call that an earlier run of the program has seen and not logged is logged as far as it was
  // known. If its caller is on the line still, the row is brought up to date at the end.
  void log_left(int line, const EndedCall& left);

  // What the line's record says now was saved for the call that is on it.
  void record_saved(int line);

  // What is known of the caller of the call is now this.
  platform::LoggedCall with_texts(platform::LoggedCall call, const EntryTexts& texts) const;

  // What is known of the caller of a call that has ended is now this: its row in the log is
  // changed, or added where the call wasn't logged since it had no data or no log was chosen. The
  // times of the call stay. False, and nothing is changed, where no log is chosen for it.
  bool complete(platform::LoggedCall call, const EntryTexts& texts);

  // The rows of the chosen log, opened at first use and anew after another was chosen.
  platform::Recordset& recordset();

  // Opens a file as the log and chooses it. Where it fails the log that is in use stays.
  void choose(const std::string& file);

  // Chooses a file that can't be opened for now.
  void choose_unseen(const std::string& file);

  // Whether a log is chosen. The file may still be out of reach.
  bool chosen() const;

  // Gives the column that the user names another name in the chosen log. Fails as the database
  // does.
  void rename_user_field(const std::string& name);

 private:
  struct OpenLog {
    std::string name;
    std::unique_ptr<platform::Database> database;
    std::unique_ptr<platform::Recordset> recordset;
  };

  struct OnLine {
    CallNumber number;
    platform::DateTime noticed;
  };

  // A line of a studio group.
  struct GroupLine {
    int group;
    int line;
    auto operator<=>(const GroupLine&) const = default;
  };

  // A call that was logged may go on. Or it has ended while its record stays on the line, as where
  // a session begins, perhaps by mistake; until another call begins there.
  enum class Rest { GoesOn, RecordStays, OtherCallBegun };

  struct Logged {
    platform::LoggedCall call;
    Rest rest;
    // Of one that may go on.
    std::optional<LastSeen> last_seen;
  };

  bool is_record_of(const Logged& logged, int line, const platform::LoggedCall& call) const;
  bool may_go_on_as(const Logged& logged, int line, const platform::LoggedCall& call);
  void bring_up_to_date(const GroupLine& place, Logged& logged, const platform::LoggedCall& call);
  void put(int line, const EndedCall& ended);
  // The chosen log's file, as the journal names it.
  std::string file_of_log() const;
  void end(int line, const EndedCall& ended);
  const OnLine& on_line(int line);
  OpenLog open(const std::string& file) const;
  static bool has_other_file(const OpenLog& log);

  ConsoleState& state_;
  OpenLog log_;
  std::map<int, OnLine> calls_on_lines_;
  // What was logged last of each line, as long as a record of the same call may come behind it.
  std::map<GroupLine, Logged> logged_;
  std::optional<LastSeen> last_seen_;
  CallNumber last_call_ = 0;
};

// Whether the record takes the place of the earlier one's row.
bool is_row_of(const platform::LoggedCall& earlier, const platform::LoggedCall& record);

// The columns of a new log, whose last one has the user's name for it. A database's texts are
// UTF-8.
std::vector<platform::DatabaseColumn> new_log_columns(std::string_view user_field_name_utf8);

}  // namespace lineweir
