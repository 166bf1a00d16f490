#pragma once

#include <string>
#include <vector>

#include "base/event.h"

namespace lineweir::platform {

// A column of a log and what it holds of a call. A column without a name is told by its place
// behind the others.
struct LoggedColumn {
  std::string name;
  std::string value;

  friend bool operator==(const LoggedColumn&, const LoggedColumn&) = default;
};

// The record of a call that has ended. All text is UTF-8.
struct LoggedCall {
  // The name of the log's file, whatever letters the next run of the program has, and the table in
  // it.
  std::string file;
  std::string table;
  // The log's columns in their order, see places_of_columns. A table without them is no log.
  std::vector<LoggedColumn> columns;
  // The record of the same call that was handed over before, which this one takes the place of;
  // none for a call that was not.
  std::vector<LoggedColumn> replaced;

  friend bool operator==(const LoggedCall&, const LoggedCall&) = default;
};

// Why a log takes no calls: the number of a Failure and one sentence that names the file.
struct LogTrouble {
  std::string file;
  int number = 0;
  std::string reason;

  friend bool operator==(const LogTrouble&, const LogTrouble&) = default;
};

struct CallJournalState {
  // Calls that have been handed over and can't go to their logs for now.
  int waiting = 0;
  // The logs that they wait for, each once.
  std::vector<LogTrouble> troubles;
  // Why the calls that wait would not outlive the program, in one sentence; empty while they would.
  std::string journal_trouble;

  friend bool operator==(const CallJournalState&, const CallJournalState&) = default;
};

// Takes the records of finished calls and sees to it that they come into their logs: those of one
// file in the order in which they were handed over, each exactly once, as soon as the file can be
// written. Calls that wait when the program ends come into their logs in one of the next runs.
//
// Everything here is called on the loop's thread, and never waits for a file or for another
// program.
class CallJournal {
 public:
  virtual ~CallJournal() = default;

  // Hands over the record of a call. When this returns the record outlives the program, however
  // that ends. Nothing that happens to the log's file is a failure here. A record that replaces
  // another one is added where the log doesn't hold that any more.
  virtual void put(LoggedCall call) = 0;

  // The log that is in use from now on, by its file's name as in LoggedCall. Numbers in that column
  // of it are to be found quickly.
  virtual void use(const std::string& file, const std::string& table, int number_column) = 0;

  // Calls that wait for one log go to another instead.
  virtual void redirect(const std::string& from, const std::string& to) = 0;

  virtual CallJournalState state() const = 0;

  // Both are told from the loop and never from within a call of this object: of each change of the
  // state; of a log in whose place another file was found, which takes the calls from now on.
  Event<void()> on_change;
  Event<void(const std::string& file)> on_replaced;
};

}  // namespace lineweir::platform
