#pragma once

#include <string>

#include "base/failure.h"

namespace lineweir {

class CallLog;
class DisplayOptions;
struct ConsoleState;

// Which file the call log is: chosen by the user, by the settings or by a profile.
class CallLogFile {
 public:
  CallLogFile(ConsoleState& state, DisplayOptions& display, CallLog& call_log);

  // Makes a new file with an empty log; false, with a message, where that fails.
  bool CreateDatabase(const std::string& TheFile);

  // Uses the file that was stored in the settings or a profile. For one that is in use or has no
  // room the calls wait. Where it can't be used otherwise a message says so, a failure is reported
  // under the handler's name, and nothing is logged.
  void use_stored(const std::string& file, const std::string& handler);

  // What the settings store: the log in use, or the stored one that could not be used, which may be
  // there again at the next start.
  std::string path_to_store() const;

 private:
  // Asks for the file. One that doesn't exist is made; where a file can't be used a message says
  // why, and the log that is in use stays.
  void DatabasePathMenuItem_Click();

  bool open_or_create(const std::string& file);
  // A file without any table is a log that a program was killed in while it made it. Whether that
  // was made up for.
  bool finish(const std::string& file);
  void make(const std::string& file);
  void compare_user_field();
  // What waits for another log may go to this one.
  void take_waiting_calls(const std::string& file);
  void refuse(const std::string& handler, const Failure& failure);

  ConsoleState& state_;
  DisplayOptions& display_;
  CallLog& call_log_;
  std::string out_of_reach_;
};

}  // namespace lineweir
